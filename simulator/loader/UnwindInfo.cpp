#include "simulator/loader/UnwindInfo.h"

#include <fmt/format.h>

#include <array>
#include <map>

namespace simulator {

namespace {

constexpr std::string_view kUnwindTable = "the unwind table";
constexpr std::uint32_t kVersion = 1;
constexpr std::uint32_t kRegularPage = 2;
constexpr std::uint32_t kCompressedPage = 3;

constexpr std::uint32_t kModeMask = 0x0F000000;
constexpr std::uint32_t kPersonalityMask = 0x30000000;
constexpr std::uint32_t kHasLsda = 0x40000000;

constexpr std::uint32_t kStackSlot = 8;
// From the saved base pointer up to the canonical frame address: itself and the return address.
constexpr std::uint32_t kBasePointerToFrameAddress = 2 * kStackSlot;

struct Header {
  std::uint32_t version;
  std::uint32_t commonEncodings, commonEncodingCount;
  std::uint32_t personalities, personalityCount;
  std::uint32_t index, indexCount;
};

struct IndexEntry {
  std::uint32_t function;
  std::uint32_t page;
  std::uint32_t lsdaIndex;
};

struct RegularPage {
  std::uint16_t entries, entryCount;
};

struct CompressedPage {
  std::uint16_t entries, entryCount;
  std::uint16_t encodings, encodingCount;
};

struct FunctionEncoding {
  std::uint32_t function;
  std::uint32_t encoding;
};

// Reads the two-level table: an index of pages, each a list of functions with their encodings.
class UnwindTable {
 public:
  explicit UnwindTable(Bytes section) : section_(section) {
    header_ = at<Header>(0);
    if (header_.version != kVersion) {
      throw LoadError(fmt::format("the unwind table has version {}", header_.version));
    }
  }

  std::vector<UnwindEntry> run() {
    if (header_.indexCount == 0) return {};
    // The last index entry only marks where the last page's functions end.
    for (std::uint32_t i = 0; i + 1 < header_.indexCount; ++i) {
      const auto entry = at<IndexEntry>(header_.index, i);
      const auto next = at<IndexEntry>(header_.index, i + 1);
      readLsdas(entry.lsdaIndex, next.lsdaIndex);
      if (entry.page != 0) readPage(entry);
    }
    return entries(at<IndexEntry>(header_.index, header_.indexCount - 1).function);
  }

 private:
  // The `index`-th record of type T of the array at `offset`.
  template <class T>
  T at(std::uint64_t offset, std::uint64_t index = 0) const {
    return ByteReader(section_, kUnwindTable, offset + index * sizeof(T)).template read<T>();
  }

  void readLsdas(std::uint32_t begin, std::uint32_t end) {
    struct LsdaEntry {
      std::uint32_t function, lsda;
    };
    for (std::uint64_t offset = begin; offset + sizeof(LsdaEntry) <= end;
         offset += sizeof(LsdaEntry)) {
      const auto entry = at<LsdaEntry>(offset);
      lsdas_[entry.function] = entry.lsda;
    }
  }

  void readPage(const IndexEntry& entry) {
    const auto kind = at<std::uint32_t>(entry.page);
    if (kind == kRegularPage) return readRegularPage(entry.page);
    if (kind == kCompressedPage) return readCompressedPage(entry);
    throw LoadError(fmt::format("an unwind page of kind {} is not supported", kind));
  }

  void readRegularPage(std::uint32_t page) {
    const auto head = at<RegularPage>(page + std::uint64_t{4});
    for (std::uint32_t i = 0; i < head.entryCount; ++i) {
      functions_.push_back(at<FunctionEncoding>(std::uint64_t{page} + head.entries, i));
    }
  }

  void readCompressedPage(const IndexEntry& entry) {
    const auto head = at<CompressedPage>(entry.page + std::uint64_t{4});
    for (std::uint32_t i = 0; i < head.entryCount; ++i) {
      const auto packed = at<std::uint32_t>(std::uint64_t{entry.page} + head.entries, i);
      const std::uint32_t encoding = encodingAt(entry.page, head, packed >> 24);
      functions_.push_back({entry.function + (packed & 0xFFFFFF), encoding});
    }
  }

  // The first indices select encodings common to the whole table, the rest the page's own.
  std::uint32_t encodingAt(std::uint32_t page, const CompressedPage& head, std::uint32_t index) {
    if (index < header_.commonEncodingCount) {
      return at<std::uint32_t>(header_.commonEncodings, index);
    }
    index -= header_.commonEncodingCount;
    if (index >= head.encodingCount) throw LoadError("the unwind table misses an encoding");
    return at<std::uint32_t>(std::uint64_t{page} + head.encodings, index);
  }

  std::vector<UnwindEntry> entries(std::uint32_t end) const {
    std::vector<UnwindEntry> result;
    for (std::size_t i = 0; i < functions_.size(); ++i) {
      const auto [function, encoding] = functions_[i];
      const std::uint32_t next = i + 1 < functions_.size() ? functions_[i + 1].function : end;
      if (next < function) throw LoadError("the unwind table is out of order");
      if ((encoding & kModeMask) == 0 || next == function) continue;
      result.push_back({function, next, encoding, personality(encoding), lsda(function, encoding)});
    }
    return result;
  }

  std::uint32_t personality(std::uint32_t encoding) const {
    const std::uint32_t index = (encoding & kPersonalityMask) >> 28;
    if (index == 0) return 0;
    if (index > header_.personalityCount) throw LoadError("the unwind table misses a personality");
    return at<std::uint32_t>(header_.personalities, index - 1);
  }

  std::uint32_t lsda(std::uint32_t function, std::uint32_t encoding) const {
    if ((encoding & kHasLsda) == 0) return 0;
    const auto found = lsdas_.find(function);
    if (found == lsdas_.end()) throw LoadError("the unwind table misses a function's own data");
    return found->second;
  }

  Bytes section_;
  Header header_;
  std::map<std::uint32_t, std::uint32_t> lsdas_;
  std::vector<FunctionEncoding> functions_;
};

Frame dwarfFrame(std::uint32_t encoding) {
  Frame frame;
  frame.kind = FrameKind::kDwarf;
  frame.dwarfOffset = encoding & 0xFFFFFF;
  return frame;
}

[[noreturn]] void refuseMode(std::uint32_t encoding) {
  throw LoadError(fmt::format("unwind encoding {:#010x} is not supported", encoding));
}

// The encodings of code for 64-bit Intel (UNWIND_X86_64_…).
namespace x86_64 {

enum Mode : std::uint32_t {
  kModeBasePointer = 0x01000000,
  kModeStackImmediate = 0x02000000,
  kModeStackIndirect = 0x03000000,
  kModeDwarf = 0x04000000
};

// DWARF numbers of the encodings' registers 1 to 6 (rbx, r12 to r15, rbp); 0 is a gap.
constexpr std::array<int, 7> kDwarfNumbers = {-1, 3, 12, 13, 14, 15, 6};

int dwarfNumber(std::uint32_t number) {
  if (number >= kDwarfNumbers.size()) throw LoadError("an unwind encoding names no register");
  return kDwarfNumbers[number];
}

// Five registers of three bits each, from the lowest address up; 0 is a gap.
Frame decodeBasePointerFrame(std::uint32_t encoding) {
  Frame frame;
  frame.kind = FrameKind::kBasePointer;
  frame.reserved = kStackSlot;
  for (std::uint32_t bits = encoding & 0x7FFF; bits != 0; bits >>= 3) {
    frame.registers.push_back(dwarfNumber(bits & 7));
  }
  frame.firstRegisterBelow = kBasePointerToFrameAddress + ((encoding >> 16) & 0xFF) * kStackSlot;
  return frame;
}

// The order of the saved registers is a permutation, written as one number in mixed radix: each
// digit is the rank of a register among those not yet used.
std::vector<int> decodePermutation(std::uint32_t count, std::uint32_t permutation) {
  if (count > 6) throw LoadError(fmt::format("an unwind encoding saves {} registers", count));
  std::vector<std::uint32_t> left = {1, 2, 3, 4, 5, 6};
  std::vector<int> registers;
  std::uint32_t radix = 1;
  for (std::uint32_t i = 1; i < count; ++i) radix *= 6 - i;
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t rank = permutation / radix;
    if (rank >= left.size()) throw LoadError("an unwind encoding permutes no registers");
    permutation %= radix;
    registers.push_back(dwarfNumber(left[rank]));
    left.erase(left.begin() + rank);
    if (i + 1 < count) radix /= 5 - i;
  }
  return registers;
}

// The registers lie directly below the return address.
Frame decodeStackFrame(std::uint32_t encoding, FrameKind kind) {
  Frame frame;
  frame.kind = kind;
  frame.reserved = kStackSlot;
  const std::uint32_t size = (encoding >> 16) & 0xFF;
  if (kind == FrameKind::kStackImmediate) {
    frame.stackSize = size * kStackSlot;
  } else {
    frame.sizeOffset = size;
    frame.stackAdjust = ((encoding >> 13) & 7) * kStackSlot;
  }
  frame.registers = decodePermutation((encoding >> 10) & 7, encoding & 0x3FF);
  frame.firstRegisterBelow = static_cast<std::uint32_t>(frame.registers.size() + 1) * kStackSlot;
  return frame;
}

Frame decode(std::uint32_t encoding) {
  switch (encoding & kModeMask) {
    case kModeBasePointer:
      return decodeBasePointerFrame(encoding);
    case kModeStackImmediate:
      return decodeStackFrame(encoding, FrameKind::kStackImmediate);
    case kModeStackIndirect:
      return decodeStackFrame(encoding, FrameKind::kStackIndirect);
    case kModeDwarf:
      return dwarfFrame(encoding);
    default:
      refuseMode(encoding);
  }
}

}  // namespace x86_64

// The encodings of code for arm64 (UNWIND_ARM64_…).
namespace arm64 {

enum Mode : std::uint32_t {
  kModeFrameless = 0x02000000,
  kModeDwarf = 0x03000000,
  kModeFrame = 0x04000000
};

constexpr std::uint32_t kStackUnit = 16;

struct Pair {
  std::uint32_t flag;
  int first;  // DWARF number; that of the second one is the next
};

// Registers are saved in pairs, which follow each other downward in this order.
constexpr Pair kPairs[] = {
    {0x001, 19}, {0x002, 21}, {0x004, 23}, {0x008, 25}, {0x010, 27},  // x19 to x28
    {0x100, 72}, {0x200, 74}, {0x400, 76}, {0x800, 78},               // d8 to d15
};
constexpr std::uint32_t kPairMask = 0xF1F;

// Saves the pairs that the encoding names directly below the reserved bytes.
void savePairs(Frame& frame, std::uint32_t encoding) {
  for (const Pair& pair : kPairs) {
    if ((encoding & pair.flag) == 0) continue;
    frame.registers.insert(frame.registers.begin(), {pair.first + 1, pair.first});
  }
  frame.firstRegisterBelow =
      frame.reserved + static_cast<std::uint32_t>(frame.registers.size()) * kStackSlot;
}

Frame decodeFrame(std::uint32_t encoding) {
  if ((encoding & 0xFFFFFF & ~kPairMask) != 0)
    throw LoadError("an unwind encoding names no register");
  Frame frame;
  frame.kind = FrameKind::kBasePointer;
  frame.reserved = kBasePointerToFrameAddress;
  savePairs(frame, encoding);
  return frame;
}

// The return address is in its register, so such a function calls no other.
Frame decodeFrameless(std::uint32_t encoding) {
  if ((encoding & 0xFFF & ~kPairMask) != 0) throw LoadError("an unwind encoding names no register");
  Frame frame;
  frame.kind = FrameKind::kStackImmediate;
  frame.stackSize = ((encoding >> 12) & 0xFFF) * kStackUnit;
  savePairs(frame, encoding);
  if (frame.firstRegisterBelow > frame.stackSize) {
    throw LoadError("an unwind encoding saves a register outside its frame");
  }
  return frame;
}

Frame decode(std::uint32_t encoding) {
  switch (encoding & kModeMask) {
    case kModeFrameless:
      return decodeFrameless(encoding);
    case kModeDwarf:
      return dwarfFrame(encoding);
    case kModeFrame:
      return decodeFrame(encoding);
    default:
      refuseMode(encoding);
  }
}

}  // namespace arm64

}  // namespace

std::vector<UnwindEntry> readUnwindInfo(Bytes section) { return UnwindTable(section).run(); }

std::vector<SavedRegister> Frame::savedRegisters() const {
  std::uint32_t below = firstRegisterBelow;
  std::vector<SavedRegister> saved;
  for (const int number : registers) {
    if (below <= reserved) throw LoadError("an unwind encoding saves a register above its frame");
    if (number >= 0) saved.push_back({number, below});
    below -= kStackSlot;
  }
  return saved;
}

Frame decodeFrame(std::uint32_t encoding, mach::Processor processor) {
  return processor.type == mach::kArm64.type ? arm64::decode(encoding) : x86_64::decode(encoding);
}

}  // namespace simulator
