// The routines that write numbers as text, and the power, compared with the standard library's.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "fuzz/Input.h"
#include "hostutil/Strings.h"

namespace {

/// Where the routine promises more than a text: the integer part fits, and so do the digits of a
/// double. The last place shown may be one too low, one trailing zero is dropped, and a value
/// between -1 and 0 loses its sign.
void checkAgainstTheStandardsReader(const fuzz::Bytes& text, int places, double value) {
  if (!(std::fabs(value) < 1e9) || places < 1 || places > 5) return;
  double read = 0;
  const char* const first = reinterpret_cast<const char*>(text.get()) + 1;
  const std::from_chars_result result = std::from_chars(first, first + text[0], read);
  fuzz::require(result.ec == std::errc() && result.ptr == first + text[0],
                "DoubleToString writes a number");
  const double error = std::fabs(std::fabs(read) - std::fabs(value));
  const auto shown = static_cast<int>(first + text[0] - std::find(first, first + text[0], '.')) - 1;
  fuzz::require(error <= 1.51 * std::pow(10.0, -std::max(shown, places - 1)),
                "DoubleToString writes the value");
}

void checkPower(std::uint32_t base, std::int32_t exponent) {
  const double result = power(base, exponent);
  const double expected =
      (exponent & 0xFFFF) == 0 ? 1.0 : std::pow(base, std::max(exponent, std::int32_t{1}));
  // Each of at most 1024 products may be rounded.
  const double error = std::fabs(result - expected) / std::max(expected, 1.0);
  const bool tooLarge = std::isinf(result) && expected > 1e308;
  fuzz::require(tooLarge || error < 1024 * std::numeric_limits<double>::epsilon(),
                "power is the power, but 1 or the base for some exponents");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const fuzz::Bytes text = std::make_unique<unsigned char[]>(256);

  const auto number = input.value<std::int32_t>();
  NumToString(number, text.get());
  fuzz::require(std::to_string(number) == reinterpret_cast<char*>(text.get()) + 1,
                "NumToString writes the decimal text");

  const auto places = input.value<short>();
  const auto value = input.value<double>();
  DoubleToString(text.get(), places, value);
  fuzz::require(fuzz::isTerminated(text) && text[0] >= 3, "DoubleToString writes a whole text");
  fuzz::require(std::memchr(text.get() + 1, '.', text[0]) != nullptr,
                "DoubleToString writes a point");
  checkAgainstTheStandardsReader(text, places, value);

  // Few doubles are numbers as people write them.
  const auto fewPlaces = static_cast<short>(1 + input.value<std::uint8_t>() % 5);
  const double plain = input.value<std::int32_t>() / 1000.0;
  DoubleToString(text.get(), fewPlaces, plain);
  checkAgainstTheStandardsReader(text, fewPlaces, plain);

  const auto base = input.value<std::uint32_t>();
  checkPower(base, input.value<std::int32_t>());
  return 0;
}
