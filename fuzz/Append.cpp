// The routines that append to a length-prefixed string.
#include "fuzz/Input.h"
#include "hostutil/Strings.h"

namespace {

std::string textOf(const fuzz::Bytes& string) {
  return {reinterpret_cast<const char*>(string.get()) + 1, string[0]};
}

/// Compares with the standard's strings, up to the length from which the routine's own wraps.
void appendString(const fuzz::Bytes& destination, const fuzz::Bytes& source) {
  const std::string sum = textOf(destination) + textOf(source);
  AppendString(destination.get(), source.get(), 1, source[0]);
  fuzz::require(fuzz::isTerminated(destination), "AppendString ends its string");
  fuzz::require(sum.size() > 255 || textOf(destination) == sum.substr(0, 254),
                "AppendString appends as many characters as fit");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const fuzz::Bytes source = input.lengthPrefixed();
  const fuzz::Bytes destination = input.lengthPrefixed();
  switch (input.value<std::uint8_t>() % 5) {
    case 0:
      appendString(destination, source);
      break;
    case 1:
      AppendCharToString(destination.get(), input.value<char>());
      fuzz::require(fuzz::isTerminated(destination), "AppendCharToString ends its string");
      break;
    case 2:
      PStrCat(source.get(), destination.get());
      break;
    case 3:
      PStrInsert(source.get(), destination.get());
      break;
    default:
      HostReportError(destination.get(), source.get());
      fuzz::require(fuzz::isTerminated(destination), "HostReportError ends its string");
  }
  return 0;
}
