#include <gtest/gtest.h>

#include <string>

#include "hostutil/Strings.h"
#include "tests/hostutil/Buffers.h"

namespace {

using hostutil_test::CString;
using hostutil_test::PString;

std::string repeated(int count, char c) { return std::string(static_cast<std::size_t>(count), c); }

// --- AppendString

TEST(AppendString, appends_from_the_start_index_on) {
  PString destination("ab");
  EXPECT_EQ(AppendString(destination, PString("cdef"), 2, 3), 5);
  EXPECT_EQ(destination.text(), "abdef");
  EXPECT_EQ(destination.terminated(), "abdef");
}

TEST(AppendString, a_count_of_zero_or_less_appends_nothing_but_ends_the_string) {
  for (const short count : {short{0}, short{-1}, short{-32768}}) {
    PString destination("ab");
    EXPECT_EQ(AppendString(destination, PString("cdef"), 1, count), 2);
    EXPECT_EQ(destination.terminated(), "ab");
  }
}

TEST(AppendString, fills_up_to_254_characters) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(AppendString(destination, PString("bcdefg"), 1, 4), 254);
  EXPECT_EQ(destination.terminated(), repeated(250, 'a') + "bcde");
}

TEST(AppendString, a_length_of_255_becomes_254) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(AppendString(destination, PString("bcdefg"), 1, 5), 254);
  EXPECT_EQ(destination.terminated(), repeated(250, 'a') + "bcde");
}

TEST(AppendString, a_count_one_too_large_wraps_the_length_onto_its_own_byte) {
  PString destination(repeated(250, 'a'));
  // 6 - 1 + 250 is below 256: six bytes are taken, the last one where the length is.
  EXPECT_EQ(AppendString(destination, PString("bcdef\x07"), 1, 6), 7);
  EXPECT_EQ(destination.text(), "aaaaaaa");
}

TEST(AppendString, a_count_beyond_the_bound_takes_start_plus_255_minus_length) {
  PString destination(repeated(250, 'a'));
  const PString source("bcdef\x07" + repeated(200, 'z'));
  EXPECT_EQ(AppendString(destination, source, 1, 206), 7);  // six bytes, as above
  PString other(repeated(250, 'a'));
  EXPECT_EQ(AppendString(other, source, 0, 206), 254);  // five bytes
}

TEST(AppendString, the_bound_grows_with_the_start_index) {
  PString destination(repeated(255, 'a'));
  const PString source(repeated(250, 'b'));
  // 10 - 20 + 255 is below 256, so ten bytes are taken though there is no room at all.
  EXPECT_EQ(AppendString(destination, source, 20, 10), 'b' + 9);
}

// --- AppendCharToString

TEST(AppendCharToString, appends_and_ends_the_string) {
  PString text("ab");
  EXPECT_EQ(AppendCharToString(text, 'c'), 3);
  EXPECT_EQ(text.terminated(), "abc");
}

TEST(AppendCharToString, on_254_characters_leaves_254_with_a_zero_byte_at_255) {
  PString text(repeated(254, 'a'));
  EXPECT_EQ(AppendCharToString(text, 'b'), 254);
  EXPECT_EQ(text.text(), repeated(254, 'a'));
  EXPECT_EQ(text[255], 0);
}

TEST(AppendCharToString, on_255_characters_gives_254) {
  PString text(repeated(255, 'a'));
  EXPECT_EQ(AppendCharToString(text, 'b'), 254);
  EXPECT_EQ(text.terminated(), repeated(254, 'a'));
}

TEST(AppendCharToString, the_254th_character_fits) {
  PString text(repeated(253, 'a'));
  EXPECT_EQ(AppendCharToString(text, 'b'), 254);
  EXPECT_EQ(text.terminated(), repeated(253, 'a') + "b");
}

// --- zero-terminated strings

TEST(PIstrlen, counts_up_to_32767) {
  EXPECT_EQ(PIstrlen(CString("")), 0);
  EXPECT_EQ(PIstrlen(CString("abc")), 3);
  EXPECT_EQ(PIstrlen(CString(repeated(32766, 'a'))), 32766);
  EXPECT_EQ(PIstrlen(CString(repeated(32767, 'a'))), 32767);
  EXPECT_EQ(PIstrlen(CString(repeated(40000, 'a'))), 32767);
}

TEST(PIstrlcat, appends_where_there_is_room) {
  CString destination("ab", 6);
  EXPECT_EQ(PIstrlcat(destination, "cde", 6), 5u);
  EXPECT_EQ(destination.text(), "abcde");
}

TEST(PIstrlcat, cuts_off_and_returns_the_full_length) {
  CString destination("ab", 5);
  EXPECT_EQ(PIstrlcat(destination, "cdefg", 5), 7u);
  EXPECT_EQ(destination.text(), "abcd");
}

TEST(PIstrlcat, without_a_zero_byte_in_size_nothing_is_written) {
  CString destination("abcdef");
  EXPECT_EQ(PIstrlcat(destination, "gh", 4), 6u);
  EXPECT_EQ(destination.text(), "abcdef");
}

TEST(PIstrlcat, a_size_of_zero_touches_nothing) { EXPECT_EQ(PIstrlcat(nullptr, "gh", 0), 2u); }

TEST(PIstrlcat, counts_beyond_16_bits) {
  CString destination("ab", 70000);
  EXPECT_EQ(PIstrlcat(destination, CString(repeated(66000, 'x')), 70000), 66002u);
  EXPECT_EQ(destination.text(), "ab" + repeated(66000, 'x'));
}

TEST(HostStringCat, appends_and_returns_the_new_length) {
  CString destination("ab", 6);
  EXPECT_EQ(HostStringCat(destination, "cde"), 5);
  EXPECT_EQ(destination.text(), "abcde");
}

TEST(HostStringCat, keeps_the_result_at_32767_characters) {
  CString destination(repeated(32765, 'a'), 32768);
  EXPECT_EQ(HostStringCat(destination, "bcd"), 32767);
  EXPECT_EQ(destination.text(), repeated(32765, 'a') + "bc");
}

TEST(HostStringCat, leaves_a_longer_destination_as_it_is) {
  CString destination(repeated(33000, 'a'));
  EXPECT_EQ(HostStringCat(destination, "bcd"), 32767);
  EXPECT_EQ(destination.text(), repeated(33000, 'a'));
}

TEST(UpperToLower, lowers_ascii_letters_alone) {
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

TEST(HostStringMatch, abcdef_ends_with_def_at_3) { EXPECT_EQ(stringMatch("abcdef", "def"), 3); }

TEST(HostStringMatch, abcdef_does_not_end_with_abc) { EXPECT_EQ(stringMatch("abcdef", "abc"), -1); }

TEST(HostStringMatch, abcdef_ends_with_DEF_where_case_is_ignored) {
  EXPECT_EQ(stringMatch("abcdef", "DEF", true), 3);
  EXPECT_EQ(stringMatch("abcdef", "DEF", false), -1);
  EXPECT_EQ(stringMatch("abcDEF", "dEf", true), 3);
}

TEST(HostStringMatch, aabc_does_not_match_abc_because_nothing_is_tried_again) {
  EXPECT_EQ(stringMatch("aabc", "abc"), -1);
}

TEST(HostStringMatch, abcabc_does_not_match_abc_because_a_match_followed_by_text_is_dropped) {
  EXPECT_EQ(stringMatch("abcabc", "abc"), -1);
}

TEST(HostStringMatch, a_character_that_follows_a_dropped_match_does_not_start_a_new_one) {
  EXPECT_EQ(stringMatch("abcxabc", "abc"), 4);
}

TEST(HostStringMatch, a_text_of_255_characters_is_cut_to_254_and_ended) {
  PString text(repeated(253, 'x') + "ab");
  EXPECT_EQ(HostStringMatch(text, "a", false), 253);
  EXPECT_EQ(text.length(), 254);
  EXPECT_EQ(text[255], 0);
}

TEST(HostStringMatch, the_zero_byte_behind_the_text_is_written) {
  PString text("abc");
  HostStringMatch(text, "x", false);
  EXPECT_EQ(text.terminated(), "abc");
}

TEST(HostStringMatch, an_empty_text_does_not_match) { EXPECT_EQ(stringMatch("", "a"), -1); }

TEST(HostMatch, a_text_that_ends_inside_a_match_answers_where_that_started) {
  EXPECT_EQ(HostMatch("xxab", "abc", false, 255), 2);
}

TEST(HostMatch, an_empty_pattern_matches_nowhere_in_a_text) {
  EXPECT_EQ(HostMatch("abc", "", false, 255), -1);
}

TEST(HostMatch, an_empty_pattern_matches_an_empty_text_at_0) {
  EXPECT_EQ(HostMatch(CString("", 2), CString("", 2), false, 255), 0);
}

TEST(HostMatch, an_empty_text_matches_no_pattern_and_is_not_read_beyond_its_zero_byte) {
  EXPECT_EQ(HostMatch(CString(""), "abc", false, 255), -1);
}

TEST(HostMatch, a_walk_that_the_limit_stops_inside_the_text_answers_minus_1) {
  EXPECT_EQ(HostMatch("xxabc", "abc", false, 4), 2);
  EXPECT_EQ(HostMatch("xxabc", "abc", false, 3), -1);
}

TEST(HostMatch, a_limit_below_0_still_takes_the_first_character) {
  EXPECT_EQ(HostMatch("a", "a", false, -1), 0);
  EXPECT_EQ(HostMatch("ab", "ab", false, -32768), -1);
}

TEST(HostMatch, a_byte_of_128_and_above_at_the_limit_counts_as_an_end) {
  EXPECT_EQ(HostMatch("xab\x80xx", "abc", false, 2), 1);
  EXPECT_EQ(HostMatch("xab\xFFxx", "abc", false, 2), 1);
  EXPECT_EQ(HostMatch("xab\x7Fxx", "abc", false, 2), -1);
}

TEST(HostMatch, with_a_limit_of_256_a_zero_byte_ends_only_a_whole_match) {
  const CString text(std::string("xab\0yyabc", 9), 300);
  EXPECT_EQ(HostMatch(text, "abc", false, 255), 1);
  EXPECT_EQ(HostMatch(text, "abc", false, 256), 6);
}

TEST(HostMatch, case_is_ignored_for_ascii_letters_alone) {
  EXPECT_EQ(HostMatch("x\xC4", "\xE4", true, 255), -1);
  EXPECT_EQ(HostMatch("x[", "{", true, 255), -1);
  EXPECT_EQ(HostMatch("xZ", "z", true, 255), 1);
}

// --- from one form to the other

TEST(PStrCat, appends) {
  PString destination("ab");
  EXPECT_EQ(PStrCat(PString("cd"), destination), 4);
  EXPECT_EQ(destination.text(), "abcd");
}

TEST(PStrCat, neither_caps_at_254_nor_ends_with_a_zero_byte) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(PStrCat(PString("bcdef"), destination), 255);
  EXPECT_EQ(destination.text(), repeated(250, 'a') + "bcdef");
  PString shorter("ab");
  PStrCat(PString("cd"), shorter);
  EXPECT_EQ(shorter[5], 'X');
}

TEST(PStrCat, the_length_wraps_and_what_does_not_fit_is_dropped) {
  PString destination(repeated(250, 'a'));
  EXPECT_EQ(PStrCat(PString("bcdefghi"), destination), 2);
  EXPECT_EQ(std::string(destination.characters(), 255), repeated(250, 'a') + "bcdef");
}

TEST(PStrCat, a_string_can_be_appended_to_itself) {
  PString text("abc");
  EXPECT_EQ(PStrCat(text, text), 6);
  EXPECT_EQ(text.text(), "abcabc");
}

TEST(PStrInsert, puts_the_source_in_front) {
  PString destination("cd");
  EXPECT_EQ(PStrInsert(PString("ab"), destination), 4);
  EXPECT_EQ(destination.text(), "abcd");
  EXPECT_EQ(destination[5], 'X');
}

TEST(PStrInsert, the_length_wraps_and_what_does_not_fit_is_dropped) {
  PString destination(repeated(250, 'a') + "bcd");
  EXPECT_EQ(PStrInsert(PString("vwxyz"), destination), 2);
  EXPECT_EQ(std::string(destination.characters(), 255), "vwxyz" + repeated(250, 'a'));
}

TEST(PStrInsert, a_string_can_be_inserted_into_itself) {
  PString text("abc");
  EXPECT_EQ(PStrInsert(text, text), 6);
  EXPECT_EQ(text.text(), "abcabc");
}

TEST(PToCStr, copies_and_ends) {
  CString destination("", 4);
  PToCStr(PString("abc"), destination);
  EXPECT_EQ(destination.text(), "abc");
}

TEST(PToCStr, works_in_place) {
  PString text("abc");
  PToCStr(text, reinterpret_cast<char*>(static_cast<unsigned char*>(text)));
  EXPECT_STREQ(reinterpret_cast<const char*>(static_cast<unsigned char*>(text)), "abc");
}

TEST(CToPStr, copies_ends_and_stores_the_length) {
  PString destination;
  CToPStr(CString("abc"), destination);
  EXPECT_EQ(destination.text(), "abc");
  EXPECT_EQ(destination.terminated(), "abc");
}

TEST(CToPStr, a_text_of_more_than_255_characters_gets_a_wrapped_length) {
  std::string destination(302, 'X');
  CToPStr(CString(repeated(300, 'a')), reinterpret_cast<unsigned char*>(destination.data()));
  EXPECT_EQ(destination[0], 300 - 256);
  EXPECT_EQ(destination.substr(1), repeated(300, 'a') + '\0');
}

TEST(CToPStr, copies_32767_characters_at_most) {
  std::string destination(32770, 'X');
  CToPStr(CString(repeated(40000, 'a')), reinterpret_cast<unsigned char*>(destination.data()));
  EXPECT_EQ(destination.substr(1), repeated(32767, 'a') + '\0' + 'X');
}

// --- four-character codes

TEST(PIType2Char, writes_the_most_significant_character_first_and_a_zero_byte) {
  CString buffer("xxxxx");
  PIType2Char(0x3842494D, buffer);
  EXPECT_EQ(buffer.text(), "8BIM");
}

TEST(PIChar2Type, of_8BIM_is_3842494D) { EXPECT_EQ(PIChar2Type("8BIM"), 0x3842494Du); }

TEST(PIChar2Type, a_character_of_128_and_above_sets_all_the_bits_before_it) {
  EXPECT_EQ(PIChar2Type("ab\x80z"), 0xFFFF807Au);
  EXPECT_EQ(PIChar2Type("\x80zzz"), 0x807A7A7Au);
  EXPECT_EQ(PIChar2Type("abc\xFE"), 0xFFFFFFFEu);
}

TEST(PIChar2Type, reads_what_PIType2Char_wrote_where_all_are_below_128) {
  CString buffer("xxxxx");
  PIType2Char(0x01207F41, buffer);
  EXPECT_EQ(PIChar2Type(buffer), 0x01207F41u);
}

// --- reporting an error

TEST(HostReportError, a_null_buffer_gives_the_error_at_once) {
  EXPECT_EQ(HostReportError(nullptr, PString("abc")), -30904);
}

TEST(HostReportError, the_message_replaces_what_the_buffer_held) {
  PString errorString("something else");
  EXPECT_EQ(HostReportError(errorString, PString("abc")), -30904);
  EXPECT_EQ(errorString.terminated(), "abc");
}

TEST(HostReportError, a_message_of_255_characters_is_cut_to_254) {
  PString errorString;
  HostReportError(errorString, PString(repeated(255, 'a')));
  EXPECT_EQ(errorString.terminated(), repeated(254, 'a'));
}

}  // namespace
