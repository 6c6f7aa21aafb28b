// Loads any bytes as a Mac plug-in, up to the point where its code would run.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "simulator/loader/MachImage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::byte> bytes(size);
  if (size > 0) std::memcpy(bytes.data(), data, size);
  try {
    simulator::MachImage::prepare(simulator::MachFile(std::move(bytes)), simulator::SimulatedMac(),
                                  "fuzzed");
  } catch (const simulator::LoadError&) {
    // What a damaged file is to give.
  }
  return 0;
}
