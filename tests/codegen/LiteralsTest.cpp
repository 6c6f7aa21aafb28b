#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

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

TEST(CommentText, EndsNoCommentAndContinuesNone) {
  EXPECT_EQ(commentText("a\nb \\"), R"(a\nb \\)");
  EXPECT_EQ(commentText("?\?/"), R"(?\?/)");
}

TEST(CodeComment, IsHarmlessInACommentOfEitherKind) {
  EXPECT_EQ(codeComment(0x57647468), "'Wdth'");
  EXPECT_EQ(codeComment(0x2A2F3F5C), R"('\052/\077\134')");
  EXPECT_EQ(codeComment(0x000AFE20), R"('\000\012\376 ')");
}

TEST(RealLiteral, ReadsBackAsTheSameNumber) {
  EXPECT_EQ(realLiteral(13.5), "13.5");
  EXPECT_EQ(realLiteral(3), "3.0");
  EXPECT_EQ(realLiteral(-0.0), "-0.0");
  EXPECT_EQ(realLiteral(0.1), "0.1");
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
  EXPECT_EQ(identifierPart("__a__"), "a") << "no reserved name";
  EXPECT_EQ(identifierPart(std::string(100, 'a')).size(), 40u);
}

}  // namespace
