#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "hostutil/Strings.h"
#include "tests/hostutil/Buffers.h"

namespace {

using hostutil_test::PString;
using Limits = std::numeric_limits<double>;

std::string repeated(int count, char c) { return std::string(static_cast<std::size_t>(count), c); }

// --- power

TEST(Power, multiplies_the_base_once_per_step) {
  EXPECT_EQ(power(2, 10), 1024.0);
  EXPECT_EQ(power(10, 1), 10.0);
  EXPECT_EQ(power(4294967295u, 2), 4294967295.0 * 4294967295.0);
}

TEST(Power, an_exponent_whose_low_16_bits_are_zero_gives_1) {
  for (const std::int32_t exponent : {0, 0x10000, 0x70000, -0x10000}) {
    EXPECT_EQ(power(7, exponent), 1.0) << exponent;
  }
}

TEST(Power, any_other_exponent_below_1_gives_the_base_once) {
  for (const std::int32_t exponent :
       {-1, -2, -0x10001, std::numeric_limits<std::int32_t>::min() + 1}) {
    EXPECT_EQ(power(7, exponent), 7.0) << exponent;
  }
}

TEST(Power, the_full_32_bit_exponent_counts) {
  EXPECT_EQ(power(2, 0x10001), Limits::infinity());
  EXPECT_EQ(power(1, 0x7FFFFFFF), 1.0);
  EXPECT_EQ(power(0, 0x7FFFFFFF), 0.0);
}

// --- whole numbers to text

TEST(NumToString, writes_the_decimal_text_with_its_length_and_a_zero_byte) {
  PString text;
  NumToString(-1234567, text);
  EXPECT_EQ(text.text(), "-1234567");
  EXPECT_EQ(text.terminated(), "-1234567");
}

TEST(NumToString, writes_the_extremes) {
  PString text;
  NumToString(std::numeric_limits<std::int32_t>::min(), text);
  EXPECT_EQ(text.text(), "-2147483648");
  NumToString(std::numeric_limits<std::int32_t>::max(), text);
  EXPECT_EQ(text.text(), "2147483647");
  NumToString(0, text);
  EXPECT_EQ(text.text(), "0");
}

TEST(NumToString, a_null_destination_is_ignored) { NumToString(1, nullptr); }

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

TEST(DoubleToString, of_1_25_with_1_place_is_1_3) { EXPECT_EQ(written(1.25, 1).text, "1.3"); }

TEST(DoubleToString, of_minus_0_5_with_1_place_is_0_5_without_the_sign) {
  EXPECT_EQ(written(-0.5, 1).text, "0.5");
}

TEST(DoubleToString, of_2_with_2_places_is_2_0) { EXPECT_EQ(written(2.0, 2).text, "2.0"); }

TEST(DoubleToString, of_2_502_with_3_places_is_2_501) {
  EXPECT_EQ(written(2.502, 3).text, "2.501");
}

TEST(DoubleToString, of_minus_1_5_keeps_the_sign) { EXPECT_EQ(written(-1.5, 1).text, "-1.5"); }

TEST(DoubleToString, returns_the_last_digit_as_a_number) {
  EXPECT_EQ(written(1.25, 1).lastDigit, 3);
  EXPECT_EQ(written(2.0, 2).lastDigit, 0);
  EXPECT_EQ(written(0.75, 2).lastDigit, 5);
}

TEST(DoubleToString, only_one_place_is_dropped) {
  EXPECT_EQ(written(0.5, 4).text, "0.5");      // the digits end by themselves
  EXPECT_EQ(written(0.125, 2).text, "0.13");   // rounded at the place asked for
  EXPECT_EQ(written(1.0001, 3).text, "1.00");  // three zeros, one dropped
}

TEST(DoubleToString, no_places_still_write_one_digit_of_what_was_rounded_up) {
  EXPECT_EQ(written(1.25, 0).text, "1.2");
  EXPECT_EQ(written(1.75, 0).text, "2.2");  // 0.5 was added
}

TEST(DoubleToString, negative_places_round_by_five) {
  EXPECT_EQ(written(1.25, -1).text, "1.2");
  EXPECT_EQ(written(1.75, -1).text, "6.7");
}

TEST(DoubleToString, a_null_destination_gives_0) { EXPECT_EQ(DoubleToString(nullptr, 1, 2.5), 0); }

TEST(DoubleToString, the_integer_part_is_the_low_32_bits_as_a_signed_number) {
  EXPECT_EQ(written(3e9, 1).text, "-1294967296.0");
  EXPECT_EQ(written(-3e9, 1).text, "1294967296.0");
}

TEST(DoubleToString, values_without_a_truncation_have_0_before_the_point) {
  EXPECT_EQ(written(Limits::quiet_NaN(), 3).text, "0.0");
  EXPECT_EQ(written(Limits::infinity(), 3).text, "0.000");
  EXPECT_EQ(written(-Limits::infinity(), 2).text, "0.00");
  EXPECT_EQ(written(1e300, 2).text, "0.00");
}

TEST(DoubleToString, more_places_than_there_is_room_for_end_at_254_characters) {
  EXPECT_EQ(written(Limits::infinity(), 32767).text, "0." + repeated(252, '0'));
}

TEST(DoubleToString, the_extreme_places_are_safe) {
  EXPECT_EQ(written(0.5, -32768).text, "5.5");
  EXPECT_EQ(written(0.5, 32767).text, "0.5");
}

// --- text to numbers

TEST(DivideAtDecimal, of_3_comma_75_leaves_3_and_appends_75) {
  PString number("3,75");
  PString fraction("1");
  DivideAtDecimal(number, fraction);
  EXPECT_EQ(number.text(), "3");
  EXPECT_EQ(number.terminated(), "3");
  EXPECT_EQ(fraction.text(), "175");
  EXPECT_EQ(fraction.terminated(), "175");
}

TEST(DivideAtDecimal, splits_at_the_last_separator) {
  PString number("1.234,5");
  PString fraction("");
  DivideAtDecimal(number, fraction);
  EXPECT_EQ(number.text(), "1.234");
  EXPECT_EQ(fraction.text(), "5");
}

TEST(DivideAtDecimal, without_a_separator_nothing_changes) {
  PString number("375");
  PString fraction("1");
  const PString numberBefore = number;
  const PString fractionBefore = fraction;
  DivideAtDecimal(number, fraction);
  EXPECT_TRUE(number == numberBefore);
  EXPECT_TRUE(fraction == fractionBefore);
}

TEST(DivideAtDecimal, a_separator_at_either_end_leaves_that_part_empty) {
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

TEST(StringToNumber, of_minus_12_between_spaces_gives_the_digits_12_2_and_the_value_0) {
  EXPECT_EQ(read(" -12 "), (Read{2, 0, "12"}));
}

TEST(StringToNumber, of_12a_is_0) { EXPECT_EQ(read("12a"), (Read{0, kUnwritten, "12"})); }

TEST(StringToNumber, of_eleven_digits_is_2147483647) {
  EXPECT_EQ(read("12345678901"), (Read{1, 2147483647, "12345678901"}));
  EXPECT_EQ(read("-12345678901"), (Read{2, -2147483647, "12345678901"}));
}

TEST(StringToNumber, of_nine_digits_is_0_and_of_ten_the_largest) {
  EXPECT_EQ(read("123456789"), (Read{1, 0, "123456789"}));
  EXPECT_EQ(read("0000000001"), (Read{1, 2147483647, "0000000001"}));
}

TEST(StringToNumber, of_a_text_without_digit_or_sign_changes_nothing) {
  for (const std::string text : {"", "   ", "abc", " x1"}) {
    EXPECT_EQ(read(text), (Read{0, kUnwritten, text})) << text;
  }
}

TEST(StringToNumber, of_a_sign_alone_is_a_negative_0) { EXPECT_EQ(read(" - "), (Read{2, 0, ""})); }

TEST(StringToNumber, a_second_sign_or_one_behind_a_digit_is_an_error) {
  EXPECT_EQ(read("--1"), (Read{0, kUnwritten, ""}));
  EXPECT_EQ(read("1-"), (Read{0, kUnwritten, "1"}));
}

TEST(StringToNumber, only_spaces_may_follow_a_space_behind_digits) {
  EXPECT_EQ(read("1  "), (Read{1, 0, "1"}));
  EXPECT_EQ(read("1 2"), (Read{0, kUnwritten, "1"}));
  EXPECT_EQ(read("1 -"), (Read{0, kUnwritten, "1"}));
}

TEST(StringToNumber, spaces_may_stand_between_the_sign_and_the_digits) {
  EXPECT_EQ(read("- 1"), (Read{2, 0, "1"}));
}

TEST(StringToNumber, the_digits_are_ended_with_a_zero_byte) {
  PString text(" 12 ");
  std::int32_t value;
  StringToNumber(text, &value);
  EXPECT_EQ(text.terminated(), "12");
}

TEST(StringToNumber, a_text_of_255_digits_stays_inside_its_buffer) {
  EXPECT_EQ(read(repeated(255, '1')), (Read{1, 2147483647, repeated(255, '1')}));
}

TEST(StringToNum, writes_no_value) {
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

TEST(StringToDouble, of_1_minus_1234567890_applies_the_minus_to_the_fraction) {
  EXPECT_EQ(readDouble("1.-1234567890"), (ReadDouble{2, 0.2147483647, "1"}));
}

TEST(StringToDouble, short_parts_read_as_0) {
  EXPECT_EQ(readDouble("12.75"), (ReadDouble{1, 0.0, "12"}));
  EXPECT_EQ(readDouble("-12"), (ReadDouble{2, 0.0, "12"}));
}

TEST(StringToDouble, long_parts_read_as_the_largest_number) {
  EXPECT_EQ(readDouble("1234567890"), (ReadDouble{1, 2147483647.0, "1234567890"}));
  EXPECT_EQ(readDouble("-1234567890"), (ReadDouble{2, -2147483647.0, "1234567890"}));
  EXPECT_EQ(readDouble("0.1234567890").value, 0.2147483647);
}

TEST(StringToDouble, the_fraction_counts_with_the_length_that_is_left_of_it) {
  EXPECT_EQ(readDouble("0.  1234567890  ").value, 0.2147483647);
}

TEST(StringToDouble, a_negative_integer_part_takes_the_fraction_along) {
  EXPECT_EQ(readDouble("-1234567890.1234567890").value, -0.2147483647 + -2147483647.0);
}

TEST(StringToDouble, a_part_that_does_not_read_counts_as_0) {
  EXPECT_EQ(readDouble("x.1234567890"), (ReadDouble{1, 0.2147483647, "x"}));
  EXPECT_EQ(readDouble("1234567890.x"), (ReadDouble{1, 2147483647.0, "1234567890"}));
}

TEST(StringToDouble, where_neither_part_reads_the_value_stays_unwritten) {
  EXPECT_EQ(readDouble("x.y"), (ReadDouble{0, kUnwritten, "x"}));
  EXPECT_EQ(readDouble(""), (ReadDouble{0, kUnwritten, ""}));
}

}  // namespace
