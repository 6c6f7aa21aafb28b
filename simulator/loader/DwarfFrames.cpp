#include "simulator/loader/DwarfFrames.h"

#include <fmt/format.h>

#include <string>

namespace simulator {

namespace {

constexpr std::string_view kEhFrameSection = "__eh_frame";
constexpr std::uint32_t kLongEntry = 0xFFFFFFFF;

// Pointer encodings (DW_EH_PE_…).
enum PointerEncoding : std::uint8_t {
  kAbsolute = 0x00,
  kSigned4 = 0x0B,
  kRelative = 0x10,
  kIndirect = 0x80,
  kFormatMask = 0x0F
};

struct CommonEntry {
  std::uint8_t codePointers = kAbsolute;
  std::uint8_t lsdaPointers = kAbsolute;
  bool augmented = false;
  bool hasLsda = false;
};

class FrameReader {
 public:
  FrameReader(Bytes section, std::uint64_t address, std::uint64_t returnAddress)
      : section_(section), address_(address), returnAddress_(returnAddress) {}

  DwarfFrame run(std::uint64_t offset) {
    std::size_t end = 0;
    ByteReader reader = entryAt(offset, end);
    const std::size_t here = reader.position();
    const auto back = reader.read<std::uint32_t>();
    if (back == 0 || back > here) throw LoadError("__eh_frame has no function entry there");
    const CommonEntry common = readCommonEntry(here - back);
    frame_.start = readPointer(reader, common.codePointers);
    frame_.size = readPlain(reader, common.codePointers & kFormatMask);
    if (common.augmented) readAugmentation(reader, common);
    frame_.instructions = rest(reader, end);
    return frame_;
  }

 private:
  // Returns a reader positioned after the entry's length field; sets `end` to the entry's end.
  ByteReader entryAt(std::uint64_t offset, std::size_t& end) const {
    ByteReader reader(section_, kEhFrameSection, offset);
    const auto length = reader.read<std::uint32_t>();
    if (length == kLongEntry) throw LoadError("__eh_frame holds an entry of the 64-bit form");
    end = reader.position() + length;
    return ByteReader(slice(section_, 0, end, kEhFrameSection), kEhFrameSection, reader.position());
  }

  CommonEntry readCommonEntry(std::uint64_t offset) {
    std::size_t end = 0;
    ByteReader reader = entryAt(offset, end);
    if (reader.read<std::uint32_t>() != 0 || reader.read<std::uint8_t>() != 1) {
      throw LoadError("__eh_frame has no common entry there");
    }
    const std::string augmentation(reader.readText());
    frame_.codeAlignment = static_cast<std::int64_t>(reader.readUleb());
    frame_.dataAlignment = reader.readSleb();
    if (reader.readUleb() != returnAddress_) {
      throw LoadError("__eh_frame keeps the return address in an unknown column");
    }
    const CommonEntry common = readCommonAugmentation(reader, augmentation);
    frame_.commonInstructions = rest(reader, end);
    return common;
  }

  CommonEntry readCommonAugmentation(ByteReader& reader, const std::string& augmentation) {
    CommonEntry common;
    if (augmentation.empty()) return common;
    if (augmentation[0] != 'z') refuse("augmentation", augmentation);
    common.augmented = true;
    const std::uint64_t size = reader.readUleb();
    const std::size_t end = reader.position() + size;
    for (const char letter : augmentation.substr(1)) {
      switch (letter) {
        case 'P':
          readPersonality(reader);
          break;
        case 'L':
          common.lsdaPointers = reader.read<std::uint8_t>();
          common.hasLsda = true;
          break;
        case 'R':
          common.codePointers = reader.read<std::uint8_t>();
          break;
        default:
          refuse("augmentation", augmentation);
      }
    }
    reader.seek(end);
    return common;
  }

  // The platform refers to the personality through a pointer that is bound at load time.
  void readPersonality(ByteReader& reader) {
    const auto encoding = reader.read<std::uint8_t>();
    if ((encoding & kIndirect) == 0) refuse("personality encoding", fmt::format("{:#x}", encoding));
    frame_.personality = readPointer(reader, encoding & static_cast<std::uint8_t>(~kIndirect));
  }

  void readAugmentation(ByteReader& reader, const CommonEntry& common) {
    const std::uint64_t size = reader.readUleb();
    const std::size_t end = reader.position() + size;
    if (common.hasLsda && size > 0) frame_.lsda = readPointer(reader, common.lsdaPointers);
    reader.seek(end);
  }

  std::uint64_t readPointer(ByteReader& reader, std::uint8_t encoding) const {
    const std::uint64_t here = address_ + reader.position();
    const std::uint64_t value = readPlain(reader, encoding & kFormatMask);
    switch (encoding & ~kFormatMask) {
      case 0:
        return value;
      case kRelative:
        return value == 0 ? 0 : here + value;
      default:
        refuse("pointer encoding", fmt::format("{:#x}", encoding));
    }
  }

  static std::uint64_t readPlain(ByteReader& reader, int format) {
    if (format == kAbsolute) return reader.read<std::uint64_t>();
    if (format != kSigned4) refuse("pointer format", fmt::format("{:#x}", format));
    return static_cast<std::uint64_t>(std::int64_t{reader.read<std::int32_t>()});
  }

  static Bytes rest(ByteReader& reader, std::size_t end) {
    if (reader.position() > end) throw LoadError("__eh_frame holds an entry that is too short");
    return reader.take(end - reader.position());
  }

  [[noreturn]] static void refuse(std::string_view what, std::string_view value) {
    throw LoadError(fmt::format("__eh_frame uses the {} {}, which is not supported", what, value));
  }

  Bytes section_;
  std::uint64_t address_;
  std::uint64_t returnAddress_;
  DwarfFrame frame_;
};

}  // namespace

DwarfFrame readDwarfFrame(Bytes section, std::uint64_t offset, std::uint64_t address,
                          std::uint64_t returnAddress) {
  return FrameReader(section, address, returnAddress).run(offset);
}

}  // namespace simulator
