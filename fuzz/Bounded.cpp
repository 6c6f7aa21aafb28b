// The routines that measure and concatenate zero-terminated strings.
#include "fuzz/Input.h"
#include "hostutil/Strings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const bool bounded = input.flag();
  const std::size_t room = 1 + input.value<std::uint16_t>() % 1300;
  const auto source = input.zeroTerminated();
  const auto destination = input.zeroTerminated(bounded ? room : 1200);
  const std::size_t before = std::strlen(destination.get());
  const std::size_t sum = before + std::strlen(source.get());
  if (!bounded) {
    fuzz::require(HostStringCat(destination.get(), source.get()) == static_cast<short>(sum),
                  "HostStringCat returns the sum of the lengths");
  } else {
    const std::size_t full = PIstrlcat(destination.get(), source.get(), room);
    fuzz::require(before >= room || full == sum, "PIstrlcat returns the full length");
    fuzz::require(before >= room || std::strlen(destination.get()) == std::min(sum, room - 1),
                  "PIstrlcat fills the room and no more");
  }
  fuzz::require(PIstrlen(destination.get()) == static_cast<short>(std::strlen(destination.get())),
                "PIstrlen counts the characters");
  return 0;
}
