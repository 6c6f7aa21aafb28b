#include <gtest/gtest.h>

#include <string>

#include "hostutil/Strings.h"
#include "tests/hostutil/Buffers.h"

namespace {

using hostutil_test::CString;
using hostutil_test::PString;
using hostutil_test::repeated;

// --- AppendString

TEST(AppendString, AppendsFromTheStartIndexOn) {
  PString destination("ab");
  EXPECT_EQ(AppendString(destination, PString("cdef"), 2, 3), 5);
  EXPECT_EQ(destination.text(), "abdef");
  EXPECT_EQ(destination.terminated(), "abdef");
}

TEST(AppendString, AppendsOnlyAZeroByteForACountOfZeroOrLess) {
  for (const short count : {short{0}, short{-1}, short{-32768}}) {
    PString destination("ab");
    EXPECT_EQ(AppendString(destination, PString("cdef"), 1, count), 2);
    EXPECT_EQ(destination.terminated(), "ab");
  }
}

TEST(AppendString, FillsUpTo254Characters) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(AppendString(destination, PString("bcdefg"), 1, 4), 254);
  EXPECT_EQ(destination.terminated(), repeated(250, 'a') + "bcde");
}

TEST(AppendString, ChangesALengthOf255To254) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(AppendString(destination, PString("bcdefg"), 1, 5), 254);
  EXPECT_EQ(destination.terminated(), repeated(250, 'a') + "bcde");
}

TEST(AppendString, WrapsTheLengthOntoItsOwnByteIfTheCountIsOneTooLarge) {
  PString destination(repeated(250, 'a'));
  // 6 - 1 + 250 is below 256: six bytes are taken, and the last one overwrites the length.
  EXPECT_EQ(AppendString(destination, PString("bcdef\x07"), 1, 6), 7);
  EXPECT_EQ(destination.text(), "aaaaaaa");
}

TEST(AppendString, TakesStartPlus255MinusLengthForACountBeyondTheBound) {
  PString destination(repeated(250, 'a'));
  const PString source("bcdef\x07" + repeated(200, 'z'));
  EXPECT_EQ(AppendString(destination, source, 1, 206), 7);  // six bytes, as above
  PString other(repeated(250, 'a'));
  EXPECT_EQ(AppendString(other, source, 0, 206), 254);  // five bytes
}

TEST(AppendString, RaisesTheBoundWithTheStartIndex) {
  PString destination(repeated(255, 'a'));
  const PString source(repeated(250, 'b'));
  // 10 - 20 + 255 is below 256, so ten bytes are taken although there is no room.
  EXPECT_EQ(AppendString(destination, source, 20, 10), 'b' + 9);
}

// --- AppendCharToString

TEST(AppendCharToString, AppendsACharacterAndAZeroByte) {
  PString text("ab");
  EXPECT_EQ(AppendCharToString(text, 'c'), 3);
  EXPECT_EQ(text.terminated(), "abc");
}

TEST(AppendCharToString, Leaves254CharactersWithAZeroByteAt255) {
  PString text(repeated(254, 'a'));
  EXPECT_EQ(AppendCharToString(text, 'b'), 254);
  EXPECT_EQ(text.text(), repeated(254, 'a'));
  EXPECT_EQ(text[255], 0);
}

TEST(AppendCharToString, Cuts255CharactersTo254) {
  PString text(repeated(255, 'a'));
  EXPECT_EQ(AppendCharToString(text, 'b'), 254);
  EXPECT_EQ(text.terminated(), repeated(254, 'a'));
}

TEST(AppendCharToString, AppendsThe254thCharacter) {
  PString text(repeated(253, 'a'));
  EXPECT_EQ(AppendCharToString(text, 'b'), 254);
  EXPECT_EQ(text.terminated(), repeated(253, 'a') + "b");
}

// --- zero-terminated strings

TEST(PIstrlen, CountsUpTo32767) {
  EXPECT_EQ(PIstrlen(CString("")), 0);
  EXPECT_EQ(PIstrlen(CString("abc")), 3);
  EXPECT_EQ(PIstrlen(CString(repeated(32766, 'a'))), 32766);
  EXPECT_EQ(PIstrlen(CString(repeated(32767, 'a'))), 32767);
  EXPECT_EQ(PIstrlen(CString(repeated(40000, 'a'))), 32767);
}

TEST(PIstrlcat, AppendsIfThereIsRoom) {
  CString destination("ab", 6);
  EXPECT_EQ(PIstrlcat(destination, "cde", 6), 5u);
  EXPECT_EQ(destination.text(), "abcde");
}

TEST(PIstrlcat, CutsTheResultAndReturnsTheFullLength) {
  CString destination("ab", 5);
  EXPECT_EQ(PIstrlcat(destination, "cdefg", 5), 7u);
  EXPECT_EQ(destination.text(), "abcd");
}

TEST(PIstrlcat, WritesNothingWithoutAZeroByteWithinTheSize) {
  CString destination("abcdef");
  EXPECT_EQ(PIstrlcat(destination, "gh", 4), 6u);
  EXPECT_EQ(destination.text(), "abcdef");
}

TEST(PIstrlcat, TouchesNothingForASizeOfZero) { EXPECT_EQ(PIstrlcat(nullptr, "gh", 0), 2u); }

TEST(PIstrlcat, CountsBeyond16Bits) {
  CString destination("ab", 70000);
  EXPECT_EQ(PIstrlcat(destination, CString(repeated(66000, 'x')), 70000), 66002u);
  EXPECT_EQ(destination.text(), "ab" + repeated(66000, 'x'));
}

TEST(HostStringCat, AppendsAndReturnsTheNewLength) {
  CString destination("ab", 6);
  EXPECT_EQ(HostStringCat(destination, "cde"), 5);
  EXPECT_EQ(destination.text(), "abcde");
}

TEST(HostStringCat, LimitsTheResultTo32767Characters) {
  CString destination(repeated(32765, 'a'), 32768);
  EXPECT_EQ(HostStringCat(destination, "bcd"), 32767);
  EXPECT_EQ(destination.text(), repeated(32765, 'a') + "bc");
}

TEST(HostStringCat, LeavesALongerDestinationUnchanged) {
  CString destination(repeated(33000, 'a'));
  EXPECT_EQ(HostStringCat(destination, "bcd"), 32767);
  EXPECT_EQ(destination.text(), repeated(33000, 'a'));
}

TEST(UpperToLower, LowersOnlyASCIILetters) {
  for (int c = -128; c < 128; ++c) {
    const bool upper = c >= 'A' && c <= 'Z';
    EXPECT_EQ(UpperToLower(static_cast<char>(c)), upper ? c + 32 : c);
  }
}

// --- the suffix match

short stringMatch(const std::string& text, const char* pattern, bool ignoreCase = false) {
  PString string(text);
  return HostStringMatch(string, CString(pattern), ignoreCase);
}

TEST(HostStringMatch, ReturnsTheStartOfTheEnding) { EXPECT_EQ(stringMatch("abcdef", "def"), 3); }

TEST(HostStringMatch, ReturnsMinusOneForAPatternAtTheStart) {
  EXPECT_EQ(stringMatch("abcdef", "abc"), -1);
}

TEST(HostStringMatch, IgnoresCaseOnRequest) {
  EXPECT_EQ(stringMatch("abcdef", "DEF", true), 3);
  EXPECT_EQ(stringMatch("abcdef", "DEF", false), -1);
  EXPECT_EQ(stringMatch("abcDEF", "dEf", true), 3);
}

TEST(HostStringMatch, DoesNotMatchAbcInAabcBecauseItNeverGoesBack) {
  EXPECT_EQ(stringMatch("aabc", "abc"), -1);
}

TEST(HostStringMatch, DropsAMatchThatIsFollowedByText) {
  EXPECT_EQ(stringMatch("abcabc", "abc"), -1);
}

TEST(HostStringMatch, MatchesAgainAfterTheCharacterThatDropsAMatch) {
  EXPECT_EQ(stringMatch("abcxabc", "abc"), 4);
}

TEST(HostStringMatch, CutsATextOf255CharactersTo254AndTerminatesIt) {
  PString text(repeated(253, 'x') + "ab");
  EXPECT_EQ(HostStringMatch(text, "a", false), 253);
  EXPECT_EQ(text.length(), 254);
  EXPECT_EQ(text[255], 0);
}

TEST(HostStringMatch, WritesAZeroByteAfterTheText) {
  PString text("abc");
  HostStringMatch(text, "x", false);
  EXPECT_EQ(text.terminated(), "abc");
}

TEST(HostStringMatch, DoesNotMatchInAnEmptyText) { EXPECT_EQ(stringMatch("", "a"), -1); }

TEST(HostMatch, ReturnsTheStartOfAMatchThatTheEndOfTheTextCutsOff) {
  EXPECT_EQ(HostMatch("xxab", "abc", false, 255), 2);
}

TEST(HostMatch, DoesNotMatchAnEmptyPatternInAText) {
  EXPECT_EQ(HostMatch("abc", "", false, 255), -1);
}

TEST(HostMatch, MatchesAnEmptyPatternInAnEmptyTextAtZero) {
  EXPECT_EQ(HostMatch(CString("", 2), CString("", 2), false, 255), 0);
}

TEST(HostMatch, DoesNotReadAnEmptyTextBeyondItsZeroByte) {
  EXPECT_EQ(HostMatch(CString(""), "abc", false, 255), -1);
  EXPECT_EQ(HostMatch("\0abc", "abc", false, 255), -1);
}

TEST(HostMatch, ReturnsMinusOneIfTheLimitStopsItInsideTheText) {
  EXPECT_EQ(HostMatch("xxabc", "abc", false, 4), 2);
  EXPECT_EQ(HostMatch("xxabc", "abc", false, 3), -1);
}

TEST(HostMatch, ReadsTheFirstCharacterEvenWithALimitBelowZero) {
  EXPECT_EQ(HostMatch("a", "a", false, -1), 0);
  EXPECT_EQ(HostMatch("ab", "ab", false, -32768), -1);
}

TEST(HostMatch, CountsAByteOf128OrAboveAtTheLimitAsAnEnd) {
  EXPECT_EQ(HostMatch("xab\x80xx", "abc", false, 2), 1);
  EXPECT_EQ(HostMatch("xab\xFFxx", "abc", false, 2), 1);
  EXPECT_EQ(HostMatch("xab\x7Fxx", "abc", false, 2), -1);
}

TEST(HostMatch, EndsAtAZeroByteOnlyAfterAWholeMatchWithALimitOf256) {
  const CString text(std::string("xab\0yyabc", 9), 300);
  EXPECT_EQ(HostMatch(text, "abc", false, 255), 1);
  EXPECT_EQ(HostMatch(text, "abc", false, 256), 6);
}

TEST(HostMatch, IgnoresCaseForASCIILettersOnly) {
  EXPECT_EQ(HostMatch("x\xC4", "\xE4", true, 255), -1);
  EXPECT_EQ(HostMatch("x[", "{", true, 255), -1);
  EXPECT_EQ(HostMatch("xZ", "z", true, 255), 1);
}

// --- conversions between the forms

TEST(PStrCat, Appends) {
  PString destination("ab");
  EXPECT_EQ(PStrCat(PString("cd"), destination), 4);
  EXPECT_EQ(destination.text(), "abcd");
}

TEST(PStrCat, NeitherCapsAt254NorWritesAZeroByte) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(PStrCat(PString("bcdef"), destination), 255);
  EXPECT_EQ(destination.text(), repeated(250, 'a') + "bcdef");
  PString shorter("ab");
  PStrCat(PString("cd"), shorter);
  EXPECT_EQ(shorter[5], 'X');
}

TEST(PStrCat, WrapsTheLengthAndDropsCharactersThatDoNotFit) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(PStrCat(PString("bcdefghi"), destination), 2);
  EXPECT_EQ(std::string(destination.characters(), 255), repeated(250, 'a') + "bcdef");
}

TEST(PStrCat, AppendsAStringToItself) {
  PString text("abc");
  EXPECT_EQ(PStrCat(text, text), 6);
  EXPECT_EQ(text.text(), "abcabc");
}

TEST(PStrInsert, InsertsTheSourceInFront) {
  PString destination("cd");
  EXPECT_EQ(PStrInsert(PString("ab"), destination), 4);
  EXPECT_EQ(destination.text(), "abcd");
  EXPECT_EQ(destination[5], 'X');
}

TEST(PStrInsert, WrapsTheLengthAndDropsCharactersThatDoNotFit) {
  PString destination(repeated(250, 'a') + "bcd");
  EXPECT_EQ(PStrInsert(PString("vwxyz"), destination), 2);
  EXPECT_EQ(std::string(destination.characters(), 255), "vwxyz" + repeated(250, 'a'));
}

TEST(PStrInsert, InsertsAStringIntoItself) {
  PString text("abc");
  EXPECT_EQ(PStrInsert(text, text), 6);
  EXPECT_EQ(text.text(), "abcabc");
}

TEST(PToCStr, CopiesTheTextAndTerminatesIt) {
  CString destination("", 4);
  PToCStr(PString("abc"), destination);
  EXPECT_EQ(destination.text(), "abc");
}

TEST(PToCStr, WorksInPlace) {
  PString text("abc");
  PToCStr(text, reinterpret_cast<char*>(static_cast<unsigned char*>(text)));
  EXPECT_STREQ(reinterpret_cast<const char*>(static_cast<unsigned char*>(text)), "abc");
}

TEST(CToPStr, CopiesTheTextTerminatesItAndStoresItsLength) {
  PString destination;
  CToPStr(CString("abc"), destination);
  EXPECT_EQ(destination.text(), "abc");
  EXPECT_EQ(destination.terminated(), "abc");
}

TEST(CToPStr, WrapsTheLengthOfATextOfMoreThan255Characters) {
  std::string destination(302, 'X');
  CToPStr(CString(repeated(300, 'a')), reinterpret_cast<unsigned char*>(destination.data()));
  EXPECT_EQ(destination[0], 300 - 256);
  EXPECT_EQ(destination.substr(1), repeated(300, 'a') + '\0');
}

TEST(CToPStr, CopiesAtMost32767Characters) {
  std::string destination(32770, 'X');
  CToPStr(CString(repeated(40000, 'a')), reinterpret_cast<unsigned char*>(destination.data()));
  EXPECT_EQ(destination.substr(1), repeated(32767, 'a') + '\0' + 'X');
}

// --- four-character codes

TEST(PIType2Char, WritesTheMostSignificantCharacterFirstAndAZeroByte) {
  CString buffer("xxxxx");
  PIType2Char(0x3842494D, buffer);
  EXPECT_EQ(buffer.text(), "8BIM");
}

TEST(PIChar2Type, PutsTheFirstCharacterIntoTheMostSignificantByte) {
  EXPECT_EQ(PIChar2Type("8BIM"), 0x3842494Du);
}

TEST(PIChar2Type, SetsAllHigherBitsForACharacterOf128OrAbove) {
  EXPECT_EQ(PIChar2Type("ab\x80z"), 0xFFFF807Au);
  EXPECT_EQ(PIChar2Type("\x80zzz"), 0x807A7A7Au);
  EXPECT_EQ(PIChar2Type("abc\xFE"), 0xFFFFFFFEu);
}

TEST(PIChar2Type, ReadsWhatPIType2CharWroteIfAllCharactersAreBelow128) {
  CString buffer("xxxxx");
  PIType2Char(0x01207F41, buffer);
  EXPECT_EQ(PIChar2Type(buffer), 0x01207F41u);
}

// --- reporting an error

TEST(HostReportError, ReturnsTheErrorForANullBuffer) {
  EXPECT_EQ(HostReportError(nullptr, PString("abc")), -30904);
}

TEST(HostReportError, ReplacesTheContentsOfTheBufferWithTheMessage) {
  PString errorString("something else");
  EXPECT_EQ(HostReportError(errorString, PString("abc")), -30904);
  EXPECT_EQ(errorString.terminated(), "abc");
}

TEST(HostReportError, CutsAMessageOf255CharactersTo254) {
  PString errorString;
  HostReportError(errorString, PString(repeated(255, 'a')));
  EXPECT_EQ(errorString.terminated(), repeated(254, 'a'));
}

}  // namespace
