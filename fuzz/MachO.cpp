// Loads any bytes as a Mac plug-in, up to the point at which its code would run.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "simulator/loader/MachImage.h"

namespace {

// Has every library, and every symbol but `_absent`, so that loading goes on to the fixups and the
// unwind table.
class Everything : public simulator::SystemLibraries {
 public:
  bool has(std::string_view) const override { return true; }
  void* find(std::string_view, std::string_view symbol) const override {
    return symbol == "_absent" ? nullptr : const_cast<char*>(&place_);
  }

 private:
  char place_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::byte> bytes(size);
  if (size > 0) std::memcpy(bytes.data(), data, size);
  try {
    simulator::MachImage::prepare(simulator::MachFile(std::move(bytes)), Everything(), "fuzzed");
  } catch (const simulator::LoadError&) {
    // The expected result for a damaged file.
  }
  return 0;
}
