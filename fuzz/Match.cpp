// The suffix match.
#include "fuzz/Input.h"
#include "hostutil/Strings.h"

namespace {

// The routine reads past the string for larger limits, and for an empty text with an empty pattern;
// callers must avoid both.
void matchZeroTerminated(fuzz::Input& input, bool ignoreCase) {
  const short limit = static_cast<short>(input.value<std::int16_t>() % 256);
  const auto pattern = input.zeroTerminated();
  const auto text = input.zeroTerminated();
  if (text[0] == 0 && pattern[0] == 0) return;
  const short start = HostMatch(text.get(), pattern.get(), ignoreCase, limit);
  fuzz::require(start >= -1 && start <= static_cast<short>(std::strlen(text.get())),
                "HostMatch answers an index inside the text");
}

void matchLengthPrefixed(fuzz::Input& input, bool ignoreCase) {
  const auto pattern = input.zeroTerminated();
  const fuzz::Bytes text = input.lengthPrefixed();
  if ((text[0] == 0 || text[1] == 0) && pattern[0] == 0) return;
  const short start = HostStringMatch(text.get(), pattern.get(), ignoreCase);
  fuzz::require(fuzz::isTerminated(text), "HostStringMatch ends the text");
  fuzz::require(start >= -1 && start <= text[0],
                "HostStringMatch answers an index inside the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const bool ignoreCase = input.flag();
  if (input.flag()) {
    matchZeroTerminated(input, ignoreCase);
  } else {
    matchLengthPrefixed(input, ignoreCase);
  }
  return 0;
}
