// Reads any bytes as one of the tables of a Mac plug-in; the first byte says which. What was read
// lies where the table may point to.
#include <algorithm>
#include <span>

#include "fuzz/Input.h"
#include "simulator/loader/DwarfFrames.h"
#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/ExportTrie.h"
#include "simulator/loader/FileKind.h"
#include "simulator/loader/MachFormat.h"
#include "simulator/loader/UniversalFile.h"
#include "simulator/loader/UnwindInfo.h"

namespace {

using namespace simulator;

constexpr std::size_t kMostWords = 1000;
constexpr std::uint64_t kAddress = 0x10000;
constexpr std::uint64_t kReturnAddressOfIntel = 16;

void readOpcodes(Bytes table) {
  fuzz::require(readRebases(table, kMostWords).size() <= kMostWords, "rebases have a limit");
}

void readBindings(Bytes table, BindKind kind) {
  fuzz::require(readBinds(table, kind, kMostWords).size() <= kMostWords, "binds have a limit");
}

void readUnwinding(Bytes table) {
  std::uint32_t end = 0;
  for (const UnwindEntry& entry : readUnwindInfo(table)) {
    fuzz::require(entry.start >= end && entry.end >= entry.start, "entries are in order");
    end = entry.end;
    for (const mach::Processor processor : {mach::kX86_64, mach::kArm64}) {
      try {
        decodeFrame(entry.encoding, processor).savedRegisters();
      } catch (const LoadError&) {
        // An encoding that this processor does not have.
      }
    }
  }
}

void readFrame(Bytes table) {
  const DwarfFrame frame = readDwarfFrame(table, 0, kAddress, kReturnAddressOfIntel);
  fuzz::require(frame.instructions.size() <= table.size(), "instructions lie in the table");
}

void readSlices(Bytes file) {
  if (formatOf(file) != FileFormat::kUniversal) return;
  const std::vector<mach::Processor> processors = processorsIn(file);
  const Bytes slice = sliceFor(file, mach::kX86_64);
  fuzz::require(
      slice.data() >= file.data() && slice.data() + slice.size() <= file.data() + file.size(),
      "a slice lies in the file");
  fuzz::require(std::any_of(processors.begin(), processors.end(),
                            [](mach::Processor p) { return p.type == mach::kX86_64.type; }),
                "the processor of a slice is listed");
}

void read(int which, Bytes table) {
  switch (which) {
    case 0:
      return readOpcodes(table);
    case 1:
      return readBindings(table, BindKind::kRegular);
    case 2:
      return readBindings(table, BindKind::kWeak);
    case 3:
      return readBindings(table, BindKind::kLazy);
    case 4:
      readExports(table);
      return;
    case 5:
      return readUnwinding(table);
    case 6:
      return readFrame(table);
    default:
      return readSlices(table);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return -1;
  try {
    read(data[0] % 8, std::as_bytes(std::span(data + 1, size - 1)));
  } catch (const LoadError&) {
    // The expected result for a damaged table.
  }
  return 0;
}
