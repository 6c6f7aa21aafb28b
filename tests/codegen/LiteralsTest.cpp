#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "codegen/Literals.h"
#include "tests/codegen/CommaLocale.h"

namespace {

TEST(StringLiteral, EscapesWhatWouldEndItOrBecomePartOfAnotherSequence) {
  EXPECT_EQ(stringLiteral("a \"b\" \\ \n\r\t\x01"
                          "7\x7F"),
            R"("a \"b\" \\ \n\r\t\0017\177")");
  EXPECT_EQ(stringLiteral("?\?/ ?\?\?= ?"), R"("?\?/ ?\?\?= ?")") << "no trigraph";
  EXPECT_EQ(stringLiteral(""), R"("")");
  EXPECT_EQ(stringLiteral({"a\0b", 3}), R"("a\000b")");
}

TEST(StringLiteral, KeepsTextAndEscapesWhatIsNotSeenOrNotText) {
  EXPECT_EQ(stringLiteral("\u00E9\u20AC\U0001F58C"), "\"\u00E9\u20AC\U0001F58C\"");
  EXPECT_EQ(stringLiteral("\u202E\u200B"), R"("\342\200\256\342\200\213")") << "bidirectional";
  EXPECT_EQ(stringLiteral("\uFEFF\xC2\x85"), R"("\357\273\277\302\205")");
  EXPECT_EQ(stringLiteral("\xFF\xC0\x80"), R"("\377\300\200")") << "not UTF-8";
  EXPECT_EQ(stringLiteral("\xED\xA0\x80"), R"("\355\240\200")") << "a surrogate";
}

std::string utf8(int character) {
  const auto c = static_cast<unsigned>(character);
  const auto continuation = [&](int shift) {
    return static_cast<char>(0x80 | (c >> shift & 0x3F));
  };
  if (c < 0x800) return {static_cast<char>(0xC0 | c >> 6), continuation(0)};
  if (c < 0x10000) return {static_cast<char>(0xE0 | c >> 12), continuation(6), continuation(0)};
  return {static_cast<char>(0xF0 | c >> 18), continuation(12), continuation(6), continuation(0)};
}

/// The first and the last of each range that is not seen, and the characters beside them.
TEST(StringLiteral, DrawsTheLineBetweenWhatIsSeenAndWhatIsNot) {
  for (const int hidden : {0x80,   0x9F,    0xAD,    0x61C,   0x200B,  0x200F,   0x2028,
                           0x202E, 0x2060,  0x206F,  0xFEFF,  0xFFF0,  0xFFFB,   0xFFFE,
                           0xFFFF, 0x1FFFE, 0xDFFFF, 0xE0000, 0xE0FFF, 0x10FFFE, 0x10FFFF}) {
    EXPECT_TRUE(stringLiteral(utf8(hidden)).starts_with("\"\\")) << std::hex << hidden;
  }
  for (const int seen :
       {0xA0,   0xAC,   0xAE,   0x61B,  0x61D,  0x200A,  0x2010,  0x2027,  0x202F,  0x205F,  0x2070,
        0xFEFE, 0xFF00, 0xFFEF, 0xFFFC, 0xFFFD, 0x10000, 0x1FFFD, 0xDFFFD, 0xE1000, 0x10FFFD}) {
    EXPECT_EQ(stringLiteral(utf8(seen)), '"' + utf8(seen) + '"') << std::hex << seen;
  }
}

TEST(StringLiteral, BreaksLongTextIntoPiecesThatBelongTogether) {
  const std::string literal = stringLiteral(std::string(200, 'x'));
  EXPECT_EQ(literal, "\"" + std::string(79, 'x') + "\"\n      \"" + std::string(79, 'x') +
                         "\"\n      \"" + std::string(42, 'x') + "\"");
}

TEST(BytesLiteral, EscapesEverythingButAscii) {
  EXPECT_EQ(bytesLiteral({"\0\xC3\xA9z", 4}), R"("\000\303\251z")");
}

TEST(UnitsLiteral, HoldsEveryUnitAndLetsNoDigitRunIntoAnEscape) {
  EXPECT_EQ(unitsLiteral({u"a\0b?\xD800"
                          u"g",
                          6}),
            R"(u"a\x0000" u"b\x003F\xD800g")");
  EXPECT_EQ(unitsLiteral(u"\"\\"), R"(u"\x0022\x005C")");
}

TEST(UnitsLiteral, SeparatesNothingButHexDigitsFromAnEscape) {
  for (const char16_t digit : std::u16string_view(u"09afAF")) {
    EXPECT_EQ(unitsLiteral(std::u16string{u'\0', digit}),
              std::string("u\"\\x0000\" u\"") + static_cast<char>(digit) + '"');
    EXPECT_EQ(unitsLiteral(std::u16string{u'x', digit}),
              std::string("u\"x") + static_cast<char>(digit) + '"');
  }
  for (const char16_t other : std::u16string_view(u"/:`g@G ~")) {
    EXPECT_EQ(unitsLiteral(std::u16string{u'\0', other}),
              std::string("u\"\\x0000") + static_cast<char>(other) + '"');
  }
  EXPECT_EQ(unitsLiteral(u"\u007F\u0080\u001F"), R"(u"\x007F\x0080\x001F")");
}

TEST(CommentText, EndsNoCommentAndContinuesNone) {
  EXPECT_EQ(commentText("a\nb \\"), R"(a\nb \\)");
  EXPECT_EQ(commentText("?\?/"), R"(?\?/)");
  EXPECT_EQ(commentText("\u00E9\u202E"), "\u00E9\\342\\200\\256");
}

TEST(CodeComment, IsHarmlessInACommentOfEitherKind) {
  EXPECT_EQ(codeComment(0x57647468), "'Wdth'");
  EXPECT_EQ(codeComment(0x2A2F3F5C), R"('\052/\077\134')");
  EXPECT_EQ(codeComment(0x000AFE20), R"('\000\012\376 ')");
  EXPECT_EQ(codeComment(0x1F7F7E21), R"('\037\177~!')");
}

TEST(RealLiteral, ReadsBackAsTheSameNumber) {
  EXPECT_EQ(realLiteral(13.5), "13.5");
  EXPECT_EQ(realLiteral(3), "3.0");
  EXPECT_EQ(realLiteral(-0.0), "-0.0");
  EXPECT_EQ(realLiteral(0.1), "0.1");
  EXPECT_EQ(realLiteral(0.7 + 0.1), "0.7999999999999999");
  EXPECT_EQ(realLiteral(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(realLiteral(1e300), "1e+300");
  EXPECT_EQ(realLiteral(std::numeric_limits<double>::denorm_min()), "4.94065645841247e-324");
  EXPECT_EQ(realLiteral(std::numeric_limits<double>::infinity()), "realOfBits(0x7FF0000000000000)");
  EXPECT_EQ(realLiteral(std::bit_cast<double>(std::uint64_t{0xFFF4000000000001})),
            "realOfBits(0xFFF4000000000001)");
}

TEST(RealLiteral, HasAPointInALocaleWithCommas) {
  const CommaLocale locale;
  EXPECT_EQ(realLiteral(-2.5e-9), "-2.5e-09");
}

TEST(IntegerLiteral, HasNoNumberThatItsTypeCannotHold) {
  EXPECT_EQ(integerLiteral(std::int32_t{-7}), "-7");
  EXPECT_EQ(integerLiteral(std::numeric_limits<std::int32_t>::min()), "-2147483647 - 1");
  EXPECT_EQ(integerLiteral(std::int64_t{5}), "5LL");
  EXPECT_EQ(integerLiteral(std::numeric_limits<std::int64_t>::min()), "-9223372036854775807LL - 1");
  EXPECT_EQ(integerLiteral(std::uint32_t{4294967295}), "4294967295u");
}

TEST(IdentifierPart, HoldsLettersAndDigitsAlone) {
  EXPECT_EQ(identifierPart("  Gaussian  Blur (2)!"), "Gaussian_Blur_2");
  EXPECT_EQ(identifierPart("\u00E9\u00E9"), "");
  EXPECT_EQ(identifierPart("azAZ09"), "azAZ09");
  EXPECT_EQ(identifierPart("a`b{c@d[e/f:g"), "a_b_c_d_e_f_g");
  EXPECT_EQ(identifierPart("__a__"), "a") << "no reserved name";
  EXPECT_EQ(identifierPart(std::string(100, 'a')).size(), 40u);
}

}  // namespace
