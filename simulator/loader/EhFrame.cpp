#include "simulator/loader/EhFrame.h"

#include <cstring>
#include <map>
#include <utility>

#include "simulator/loader/DwarfFrames.h"
#include "simulator/loader/UnwindInfo.h"

// Published by the unwinder's library; `table` is a whole table, ended by an empty entry.
extern "C" void __register_frame(void* table);
extern "C" void __deregister_frame(void* table);

namespace simulator {

namespace {

// A processor's part of a frame: DWARF numbers, and what the call and the frame's beginning save.
struct Convention {
  std::uint8_t stackPointer;
  std::uint8_t basePointer;
  std::uint8_t returnAddress;
  std::uint32_t entrySize;  // bytes on the stack on entry to a function
  std::vector<SavedRegister> savedAtEntry;
  std::vector<SavedRegister> savedByFrame;  // in functions with a base pointer
};

// On 64-bit Intel the call pushes the return address; on arm64 it leaves it in a register, which
// the frame saves together with the base pointer.
const Convention& conventionOf(mach::Processor processor) {
  static const Convention kX86_64 = {7, 6, 16, 8, {{16, 8}}, {{6, 16}}};
  static const Convention kArm64 = {31, 29, 30, 0, {}, {{29, 16}, {30, 8}}};
  return processor.type == mach::kArm64.type ? kArm64 : kX86_64;
}

constexpr std::int64_t kDataAlignment = -8;
constexpr std::uint32_t kRegisterSize = 8;

enum CallFrameInstruction : std::uint8_t {
  kNop = 0x00,
  kOffsetExtended = 0x05,
  kDefineFrameAddress = 0x0C,
  kOffset = 0x80,  // with the register in the low six bits
};

constexpr int kExtendedRegisters = 0x40;  // the first number that does not fit beside kOffset

// Functions that agree in these fields share one common entry.
struct CommonKey {
  std::uint64_t personality = 0;
  std::int64_t codeAlignment = 1;
  std::int64_t dataAlignment = kDataAlignment;
  std::vector<std::byte> instructions;

  auto operator<=>(const CommonKey&) const = default;
};

class ByteWriter {
 public:
  std::size_t size() const { return bytes_.size(); }
  std::vector<std::byte>& bytes() { return bytes_; }

  template <class T>
  void write(T value) {
    const auto* const begin = reinterpret_cast<const std::byte*>(&value);
    bytes_.insert(bytes_.end(), begin, begin + sizeof value);
  }

  void writeBytes(Bytes bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }

  void writeUleb(std::uint64_t value) {
    for (; value >= 0x80; value >>= 7) write(static_cast<std::uint8_t>(value | 0x80));
    write(static_cast<std::uint8_t>(value));
  }

  void writeSleb(std::int64_t value) {
    for (; value < -64 || value > 63; value >>= 7) write(static_cast<std::uint8_t>(value | 0x80));
    write(static_cast<std::uint8_t>(value & 0x7F));
  }

  void patch(std::size_t offset, std::uint32_t value) {
    std::memcpy(bytes_.data() + offset, &value, sizeof value);
  }

 private:
  std::vector<std::byte> bytes_;
};

class EhFrameWriter {
 public:
  explicit EhFrameWriter(std::uint8_t returnAddress) : returnAddress_(returnAddress) {}

  // Adds one function; `lsda` is the address of its language-specific data or 0.
  void add(const CommonKey& common, std::uint64_t start, std::uint64_t size, std::uint64_t lsda,
           Bytes instructions) {
    const std::size_t commonOffset = commonEntry(common);
    const std::size_t begin = beginEntry();
    out_.write(static_cast<std::uint32_t>(out_.size() - commonOffset));
    out_.write(start);
    out_.write(size);
    out_.writeUleb(sizeof lsda);
    out_.write(lsda);
    out_.writeBytes(instructions);
    endEntry(begin);
  }

  std::vector<std::byte> finish() {
    out_.write(std::uint32_t{0});
    return std::move(out_.bytes());
  }

 private:
  std::size_t commonEntry(const CommonKey& key) {
    const auto [known, added] = commons_.try_emplace(key, out_.size());
    if (added) writeCommonEntry(key);
    return known->second;
  }

  // The augmentation announces a personality (P) and the encodings of the language-specific data
  // (L) and of function addresses (R). Encoding 0 is the plain absolute form.
  void writeCommonEntry(const CommonKey& key) {
    constexpr char kAugmentation[] = "zPLR";
    const std::size_t begin = beginEntry();
    out_.write(std::uint32_t{0});
    out_.write(std::uint8_t{1});
    out_.writeBytes(std::as_bytes(std::span(kAugmentation)));
    out_.writeUleb(static_cast<std::uint64_t>(key.codeAlignment));
    out_.writeSleb(key.dataAlignment);
    out_.writeUleb(returnAddress_);
    out_.writeUleb(3 + sizeof key.personality);
    out_.write(std::uint8_t{0});
    out_.write(key.personality);
    out_.write(std::uint8_t{0});
    out_.write(std::uint8_t{0});
    out_.writeBytes(key.instructions);
    endEntry(begin);
  }

  std::size_t beginEntry() {
    out_.write(std::uint32_t{0});
    return out_.size();
  }

  void endEntry(std::size_t begin) {
    while (out_.size() % kRegisterSize != 0) out_.write(std::uint8_t{kNop});
    out_.patch(begin - sizeof(std::uint32_t), static_cast<std::uint32_t>(out_.size() - begin));
  }

  std::uint8_t returnAddress_;
  ByteWriter out_;
  std::map<CommonKey, std::size_t> commons_;
};

void defineFrameAddress(ByteWriter& out, std::uint8_t reg, std::uint32_t offset) {
  out.write(std::uint8_t{kDefineFrameAddress});
  out.writeUleb(reg);
  out.writeUleb(offset);
}

void saveRegister(ByteWriter& out, const SavedRegister& saved) {
  if (saved.number < kExtendedRegisters) {
    out.write(static_cast<std::uint8_t>(kOffset | saved.number));
  } else {
    out.write(std::uint8_t{kOffsetExtended});
    out.writeUleb(static_cast<std::uint64_t>(saved.number));
  }
  out.writeUleb(saved.below / kRegisterSize);
}

std::vector<std::byte> entryInstructions(const Convention& convention) {
  ByteWriter out;
  defineFrameAddress(out, convention.stackPointer, convention.entrySize);
  for (const SavedRegister& saved : convention.savedAtEntry) saveRegister(out, saved);
  return std::move(out.bytes());
}

class Converter {
 public:
  Converter(const MachFile& file, const ImageMemory& memory)
      : file_(file),
        memory_(memory),
        convention_(conventionOf(file.processor())),
        entryInstructions_(entryInstructions(convention_)),
        writer_(convention_.returnAddress) {}

  std::vector<std::byte> run() {
    const Section* const table = file_.findSection("__TEXT", "__unwind_info");
    if (table == nullptr) return {};
    for (const UnwindEntry& entry : readUnwindInfo(file_.contents(*table))) convert(entry);
    return writer_.finish();
  }

 private:
  void convert(const UnwindEntry& entry) {
    memory_.at(entry.start, entry.end - entry.start, "a function of the unwind table");
    const Frame frame = decodeFrame(entry.encoding, file_.processor());
    if (frame.kind == FrameKind::kDwarf) return copyDwarf(frame.dwarfOffset);
    CommonKey common;
    common.personality = entry.personality == 0 ? 0 : pointerAt(entry.personality);
    common.instructions = entryInstructions_;
    const std::vector<std::byte> instructions = frameInstructions(entry, frame);
    writer_.add(common, address(entry.start), entry.end - entry.start,
                entry.lsda == 0 ? 0 : addressInside(entry.lsda), instructions);
  }

  std::vector<std::byte> frameInstructions(const UnwindEntry& entry, const Frame& frame) const {
    ByteWriter out;
    if (frame.kind == FrameKind::kBasePointer) {
      defineFrameAddress(out, convention_.basePointer, 2 * kRegisterSize);
      for (const SavedRegister& saved : convention_.savedByFrame) saveRegister(out, saved);
    } else {
      defineFrameAddress(out, convention_.stackPointer, stackSize(entry, frame));
    }
    for (const SavedRegister& saved : frame.savedRegisters()) saveRegister(out, saved);
    return std::move(out.bytes());
  }

  std::uint32_t stackSize(const UnwindEntry& entry, const Frame& frame) const {
    if (frame.kind == FrameKind::kStackImmediate) return frame.stackSize;
    const Bytes immediate = memory_.at(std::uint64_t{entry.start} + frame.sizeOffset,
                                       sizeof(std::uint32_t), "a function's stack size");
    return ByteReader(immediate, "a stack size").read<std::uint32_t>() + frame.stackAdjust;
  }

  // Copies the file's DWARF entry of a function that the compact encodings cannot express.
  void copyDwarf(std::uint32_t offset) {
    const Section* const section = file_.findSection("__TEXT", "__eh_frame");
    if (section == nullptr) throw LoadError("the file has no __eh_frame section");
    const Bytes bytes = memory_.at(section->address, section->size, "__eh_frame");
    const DwarfFrame frame =
        readDwarfFrame(bytes, offset, address(section->address), convention_.returnAddress);
    CommonKey common{0,
                     frame.codeAlignment,
                     frame.dataAlignment,
                     {frame.commonInstructions.begin(), frame.commonInstructions.end()}};
    if (frame.personality != 0) common.personality = pointerAt(offsetOf(frame.personality));
    if (frame.lsda != 0) offsetOf(frame.lsda);
    memory_.at(offsetOf(frame.start), frame.size, "a function of __eh_frame");
    writer_.add(common, frame.start, frame.size, frame.lsda, frame.instructions);
  }

  std::uint64_t address(std::uint64_t offset) const {
    return reinterpret_cast<std::uintptr_t>(memory_.base()) + offset;
  }

  std::uint64_t addressInside(std::uint64_t offset) const {
    memory_.at(offset, 1, "data of the unwind table");
    return address(offset);
  }

  std::uint64_t offsetOf(std::uint64_t address) const {
    const std::uint64_t offset = address - reinterpret_cast<std::uintptr_t>(memory_.base());
    memory_.at(offset, 1, "data of __eh_frame");
    return offset;
  }

  std::uint64_t pointerAt(std::uint64_t offset) const {
    const Bytes pointer = memory_.at(offset, sizeof(std::uint64_t), "a personality");
    return ByteReader(pointer, "a personality").read<std::uint64_t>();
  }

  const MachFile& file_;
  const ImageMemory& memory_;
  const Convention& convention_;
  std::vector<std::byte> entryInstructions_;
  EhFrameWriter writer_;
};

}  // namespace

std::vector<std::byte> makeEhFrame(const MachFile& file, const ImageMemory& memory) {
  return Converter(file, memory).run();
}

EhFrameRegistration::EhFrameRegistration(std::vector<std::byte> table) : table_(std::move(table)) {
  if (!table_.empty()) __register_frame(table_.data());
}

EhFrameRegistration::~EhFrameRegistration() {
  if (!table_.empty()) __deregister_frame(table_.data());
}

}  // namespace simulator
