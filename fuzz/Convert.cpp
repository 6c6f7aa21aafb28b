// The routines that convert text between length-prefixed, zero-terminated and four-character form.
#include "fuzz/Input.h"
#include "hostutil/Strings.h"

namespace {

void toZeroTerminated(fuzz::Input& input) {
  const fuzz::Bytes source = input.lengthPrefixed();
  const auto destination = std::make_unique<char[]>(source[0] + std::size_t{1});
  PToCStr(source.get(), destination.get());
  fuzz::require(std::memcmp(destination.get(), source.get() + 1, source[0]) == 0,
                "PToCStr copies the characters");
}

void toLengthPrefixed(fuzz::Input& input) {
  const auto source = input.zeroTerminated();
  const std::size_t length = std::strlen(source.get());
  const auto destination = std::make_unique<unsigned char[]>(length + 2);
  CToPStr(source.get(), destination.get());
  fuzz::require(destination[0] == length % 256 && destination[length + 1] == 0,
                "CToPStr stores the length and ends the string");
}

void codes(fuzz::Input& input) {
  const auto type = input.value<std::uint32_t>();
  const auto text = std::make_unique<char[]>(5);
  PIType2Char(type, text.get());
  fuzz::require((type & 0x80808080) != 0 || PIChar2Type(text.get()) == type,
                "PIChar2Type reads what PIType2Char writes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  toZeroTerminated(input);
  toLengthPrefixed(input);
  codes(input);
  return 0;
}
