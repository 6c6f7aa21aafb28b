// The routines that append to a length-prefixed string.
#include "fuzz/Input.h"
#include "hostutil/Strings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const fuzz::Bytes source = input.lengthPrefixed();
  const fuzz::Bytes destination = input.lengthPrefixed();
  switch (input.value<std::uint8_t>() % 5) {
    case 0:
      AppendString(destination.get(), source.get(), 1, source[0]);
      fuzz::require(fuzz::isTerminated(destination), "AppendString ends its string");
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
