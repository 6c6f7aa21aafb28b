// The routines that read numbers from text.
#include <cstdlib>

#include "fuzz/Input.h"
#include "hostutil/Strings.h"

namespace {

void divide(fuzz::Input& input) {
  const fuzz::Bytes number = input.lengthPrefixed();
  const fuzz::Bytes fraction = input.lengthPrefixed();
  const unsigned char before = number[0];
  DivideAtDecimal(number.get(), fraction.get());
  fuzz::require(number[0] <= before, "DivideAtDecimal never lengthens the number");
  fuzz::require(number[0] == before || fuzz::isTerminated(fraction),
                "DivideAtDecimal ends the fraction");
}

void readWhole(fuzz::Input& input) {
  const fuzz::Bytes text = input.lengthPrefixed();
  std::int32_t value = 77;
  const int kind = StringToNumber(text.get(), &value);
  fuzz::require(kind >= 0 && kind <= 2, "StringToNumber answers 0, 1 or 2");
  fuzz::require(kind != 0 || value == 77, "StringToNumber writes no value where there is none");
  fuzz::require(kind == 0 || value == 0 || std::abs(value) == 2147483647,
                "StringToNumber reads 0 or the largest number");
}

void readDouble(fuzz::Input& input) {
  const fuzz::Bytes text = input.lengthPrefixed();
  double value = 77;
  const int kind = StringToDouble(text.get(), &value);
  fuzz::require(kind >= 0 && kind <= 2, "StringToDouble answers 0, 1 or 2");
  fuzz::require(kind != 0 || value == 77, "StringToDouble writes no value where there is none");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  divide(input);
  readWhole(input);
  readDouble(input);
  return 0;
}
