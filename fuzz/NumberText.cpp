// The routines that write numbers as text.
#include <cmath>

#include "fuzz/Input.h"
#include "hostutil/Strings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const fuzz::Bytes text = std::make_unique<unsigned char[]>(256);

  const auto number = input.value<std::int32_t>();
  NumToString(number, text.get());
  fuzz::require(std::to_string(number) == reinterpret_cast<char*>(text.get()) + 1,
                "NumToString writes the decimal text");

  DoubleToString(text.get(), input.value<short>(), input.value<double>());
  fuzz::require(fuzz::isTerminated(text) && text[0] >= 3, "DoubleToString writes a whole text");
  fuzz::require(std::memchr(text.get() + 1, '.', text[0]) != nullptr,
                "DoubleToString writes a point");

  fuzz::require(!std::isnan(power(input.value<std::uint32_t>(), input.value<std::int32_t>())),
                "power gives a number");
  return 0;
}
