#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>

#include "hostutil/Strings.h"
#include "tests/hostutil/Buffers.h"

namespace {

using hostutil_test::PString;
using hostutil_test::repeated;
using Limits = std::numeric_limits<double>;

// --- power

TEST(Power, MultipliesTheBaseOncePerStep) {
  EXPECT_EQ(power(2, 10), 1024.0);
  EXPECT_EQ(power(10, 1), 10.0);
  EXPECT_EQ(power(4294967295u, 2), 4294967295.0 * 4294967295.0);
}

TEST(Power, IsOneIfTheLow16BitsOfTheExponentAreZero) {
  for (const std::int32_t exponent : {0, 0x10000, 0x70000, -0x10000}) {
    EXPECT_EQ(power(7, exponent), 1.0) << exponent;
  }
}

TEST(Power, IsTheBaseForAnyOtherExponentBelowOne) {
  for (const std::int32_t exponent :
       {-1, -2, -0x10001, std::numeric_limits<std::int32_t>::min() + 1}) {
    EXPECT_EQ(power(7, exponent), 7.0) << exponent;
  }
}

TEST(Power, UsesAll32BitsOfTheExponent) {
  EXPECT_EQ(power(2, 0x10001), Limits::infinity());
  EXPECT_EQ(power(1, 0x7FFFFFFF), 1.0);
  EXPECT_EQ(power(0, 0x7FFFFFFF), 0.0);
}

// --- whole numbers to text

TEST(NumToString, WritesTheDecimalTextWithItsLengthAndAZeroByte) {
  PString text;
  NumToString(-1234567, text);
  EXPECT_EQ(text.text(), "-1234567");
  EXPECT_EQ(text.terminated(), "-1234567");
}

TEST(NumToString, WritesTheExtremes) {
  PString text;
  NumToString(std::numeric_limits<std::int32_t>::min(), text);
  EXPECT_EQ(text.text(), "-2147483648");
  NumToString(std::numeric_limits<std::int32_t>::max(), text);
  EXPECT_EQ(text.text(), "2147483647");
  NumToString(0, text);
  EXPECT_EQ(text.text(), "0");
}

TEST(NumToString, IgnoresANullDestination) {
  const auto convertAndExit = [] {
    NumToString(1, nullptr);
    std::exit(0);
  };
  EXPECT_EXIT(convertAndExit(), testing::ExitedWithCode(0), "");
}

// --- fractions to text

struct Written {
  std::string text;
  int lastDigit;
  bool operator==(const Written&) const = default;
};

Written written(double value, short places) {
  PString text;
  const int digit = DoubleToString(text, places, value);
  EXPECT_EQ(text.terminated(), text.text());
  return {text.text(), digit};
}

TEST(DoubleToString, Writes1Point25To1PlaceAs1Point3) { EXPECT_EQ(written(1.25, 1).text, "1.3"); }

TEST(DoubleToString, WritesMinus0Point5WithoutItsSign) { EXPECT_EQ(written(-0.5, 1).text, "0.5"); }

TEST(DoubleToString, Writes2To2PlacesAs2Point0) { EXPECT_EQ(written(2.0, 2).text, "2.0"); }

TEST(DoubleToString, Writes2Point502To3PlacesAs2Point501) {
  EXPECT_EQ(written(2.502, 3).text, "2.501");
}

TEST(DoubleToString, WritesMinus1Point5WithItsSign) { EXPECT_EQ(written(-1.5, 1).text, "-1.5"); }

TEST(DoubleToString, ReturnsTheLastDigitAsANumber) {
  EXPECT_EQ(written(1.25, 1).lastDigit, 3);
  EXPECT_EQ(written(2.0, 2).lastDigit, 0);
  EXPECT_EQ(written(0.75, 2).lastDigit, 5);
}

TEST(DoubleToString, DropsOnlyOnePlace) {
  EXPECT_EQ(written(0.5, 4).text, "0.5");      // no digits are left
  EXPECT_EQ(written(0.125, 2).text, "0.13");   // rounded at the second place
  EXPECT_EQ(written(1.0001, 3).text, "1.00");  // three zeros, one dropped
}

TEST(DoubleToString, WritesOneDigitOfTheRoundedValueForNoPlaces) {
  EXPECT_EQ(written(1.25, 0).text, "1.2");
  EXPECT_EQ(written(1.75, 0).text, "2.2");  // 0.5 was added
}

TEST(DoubleToString, RoundsByFiveForNegativePlaces) {
  EXPECT_EQ(written(1.25, -1).text, "1.2");
  EXPECT_EQ(written(1.75, -1).text, "6.7");
}

TEST(DoubleToString, ReturnsZeroForANullDestination) {
  EXPECT_EQ(DoubleToString(nullptr, 1, 2.5), 0);
}

TEST(DoubleToString, WritesTheLow32BitsOfTheIntegerPartAsASignedNumber) {
  EXPECT_EQ(written(3e9, 1).text, "-1294967296.0");
  EXPECT_EQ(written(-3e9, 1).text, "1294967296.0");
}

TEST(DoubleToString, WritesZeroBeforeThePointForValuesThatCannotBeTruncated) {
  EXPECT_EQ(written(Limits::quiet_NaN(), 3).text, "0.0");
  EXPECT_EQ(written(Limits::infinity(), 3).text, "0.000");
  EXPECT_EQ(written(-Limits::infinity(), 2).text, "0.00");
  EXPECT_EQ(written(1e300, 2).text, "0.00");
}

TEST(DoubleToString, StopsAt254Characters) {
  EXPECT_EQ(written(Limits::infinity(), 32767).text, "0." + repeated(252, '0'));
}

TEST(DoubleToString, AcceptsTheExtremeNumbersOfPlaces) {
  EXPECT_EQ(written(0.5, -32768).text, "5.5");
  EXPECT_EQ(written(0.5, 32767).text, "0.5");
}

// --- text to numbers

TEST(DivideAtDecimal, Leaves3AndAppends75For3Comma75) {
  PString number("3,75");
  PString fraction("1");
  DivideAtDecimal(number, fraction);
  EXPECT_EQ(number.text(), "3");
  EXPECT_EQ(number.terminated(), "3");
  EXPECT_EQ(fraction.text(), "175");
  EXPECT_EQ(fraction.terminated(), "175");
}

TEST(DivideAtDecimal, SplitsAtTheLastSeparator) {
  PString number("1.234,5");
  PString fraction("");
  DivideAtDecimal(number, fraction);
  EXPECT_EQ(number.text(), "1.234");
  EXPECT_EQ(fraction.text(), "5");
}

TEST(DivideAtDecimal, ChangesNothingWithoutASeparator) {
  PString number("375");
  PString fraction("1");
  const PString numberBefore = number;
  const PString fractionBefore = fraction;
  DivideAtDecimal(number, fraction);
  EXPECT_TRUE(number == numberBefore);
  EXPECT_TRUE(fraction == fractionBefore);
}

TEST(DivideAtDecimal, LeavesAPartEmptyIfTheSeparatorIsAtThatEnd) {
  PString number(".5");
  PString fraction("");
  DivideAtDecimal(number, fraction);
  EXPECT_EQ(number.length(), 0);
  EXPECT_EQ(fraction.text(), "5");
  PString other("5.");
  PString nothing("");
  DivideAtDecimal(other, nothing);
  EXPECT_EQ(other.text(), "5");
  EXPECT_EQ(nothing.terminated(), "");
}

struct Read {
  int kind;
  std::int32_t value;
  std::string text;
  bool operator==(const Read&) const = default;
};

constexpr std::int32_t kUnwritten = 77;

Read read(const std::string& from) {
  PString text(from);
  std::int32_t value = kUnwritten;
  const int kind = StringToNumber(text, &value);
  return {kind, value, text.text()};
}

TEST(StringToNumber, ReadsMinus12BetweenSpacesAsANegativeZeroWithDigits12) {
  EXPECT_EQ(read(" -12 "), (Read{2, 0, "12"}));
}

TEST(StringToNumber, Rejects12a) { EXPECT_EQ(read("12a"), (Read{0, kUnwritten, "12"})); }

TEST(StringToNumber, ReadsElevenDigitsAs2147483647) {
  EXPECT_EQ(read("12345678901"), (Read{1, 2147483647, "12345678901"}));
  EXPECT_EQ(read("-12345678901"), (Read{2, -2147483647, "12345678901"}));
}

TEST(StringToNumber, ReadsNineDigitsAsZeroAndTenAsTheLargestNumber) {
  EXPECT_EQ(read("123456789"), (Read{1, 0, "123456789"}));
  EXPECT_EQ(read("0000000001"), (Read{1, 2147483647, "0000000001"}));
}

TEST(StringToNumber, ChangesNothingInATextWithoutDigitOrSign) {
  for (const std::string text : {"", "   ", "abc", " x1"}) {
    EXPECT_EQ(read(text), (Read{0, kUnwritten, text})) << text;
  }
}

TEST(StringToNumber, ReadsASignAloneAsANegativeZero) { EXPECT_EQ(read(" - "), (Read{2, 0, ""})); }

TEST(StringToNumber, RejectsASecondSignAndASignAfterADigit) {
  EXPECT_EQ(read("--1"), (Read{0, kUnwritten, ""}));
  EXPECT_EQ(read("1-"), (Read{0, kUnwritten, "1"}));
}

TEST(StringToNumber, AcceptsOnlySpacesAfterASpaceThatFollowsDigits) {
  EXPECT_EQ(read("1  "), (Read{1, 0, "1"}));
  EXPECT_EQ(read("1 2"), (Read{0, kUnwritten, "1"}));
  EXPECT_EQ(read("1 -"), (Read{0, kUnwritten, "1"}));
}

TEST(StringToNumber, AcceptsSpacesBetweenTheSignAndTheDigits) {
  EXPECT_EQ(read("- 1"), (Read{2, 0, "1"}));
}

TEST(StringToNumber, WritesAZeroByteAfterTheDigits) {
  PString text(" 12 ");
  std::int32_t value;
  StringToNumber(text, &value);
  EXPECT_EQ(text.terminated(), "12");
}

TEST(StringToNumber, StaysInsideTheBufferOf255Digits) {
  EXPECT_EQ(read(repeated(255, '1')), (Read{1, 2147483647, repeated(255, '1')}));
}

TEST(StringToNum, WritesNoValue) {
  std::int32_t value = kUnwritten;
  StringToNum(PString("12"), &value);
  EXPECT_EQ(value, kUnwritten);
}

struct ReadDouble {
  int kind;
  double value;
  std::string text;
  bool operator==(const ReadDouble&) const = default;
};

ReadDouble readDouble(const std::string& from) {
  PString text(from);
  double value = kUnwritten;
  const int kind = StringToDouble(text, &value);
  return {kind, value, text.text()};
}

TEST(StringToDouble, AppliesAMinusInTheFractionToTheFraction) {
  EXPECT_EQ(readDouble("1.-1234567890"), (ReadDouble{2, 0.2147483647, "1"}));
}

TEST(StringToDouble, ReadsShortPartsAsZero) {
  EXPECT_EQ(readDouble("12.75"), (ReadDouble{1, 0.0, "12"}));
  EXPECT_EQ(readDouble("-12"), (ReadDouble{2, 0.0, "12"}));
}

TEST(StringToDouble, ReadsLongPartsAsTheLargestNumber) {
  EXPECT_EQ(readDouble("1234567890"), (ReadDouble{1, 2147483647.0, "1234567890"}));
  EXPECT_EQ(readDouble("-1234567890"), (ReadDouble{2, -2147483647.0, "1234567890"}));
  EXPECT_EQ(readDouble("0.1234567890").value, 0.2147483647);
}

TEST(StringToDouble, DividesTheFractionByItsRewrittenLength) {
  EXPECT_EQ(readDouble("0.  1234567890  ").value, 0.2147483647);
}

TEST(StringToDouble, NegatesTheFractionOfANegativeIntegerPart) {
  EXPECT_EQ(readDouble("-1234567890.1234567890").value, -0.2147483647 + -2147483647.0);
}

TEST(StringToDouble, CountsAPartThatIsNotANumberAsZero) {
  EXPECT_EQ(readDouble("x.1234567890"), (ReadDouble{1, 0.2147483647, "x"}));
  EXPECT_EQ(readDouble("1234567890.x"), (ReadDouble{1, 2147483647.0, "1234567890"}));
}

TEST(StringToDouble, DoesNotWriteTheValueIfNeitherPartIsANumber) {
  EXPECT_EQ(readDouble("x.y"), (ReadDouble{0, kUnwritten, "x"}));
  EXPECT_EQ(readDouble(""), (ReadDouble{0, kUnwritten, ""}));
}

}  // namespace
