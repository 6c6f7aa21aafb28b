#include "simulator/loader/FileKind.h"

#include <elf.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <string_view>

namespace simulator {

namespace {

struct Magic {
  std::string_view bytes;
  FileFormat format;
  std::string_view description;
};

// Mach-O and ELF files are described by their headers.
constexpr Magic kMagics[] = {
    {"\xCF\xFA\xED\xFE", FileFormat::kMachO, ""},
    {"\xCE\xFA\xED\xFE", FileFormat::kMachO, ""},
    {"\xFE\xED\xFA\xCF", FileFormat::kMachO, ""},
    {"\xFE\xED\xFA\xCE", FileFormat::kMachO, ""},
    {"\xCA\xFE\xBA\xBE", FileFormat::kUniversal, "a universal file"},
    {"\xCA\xFE\xBA\xBF", FileFormat::kUniversal, "a universal file"},
    {ELFMAG, FileFormat::kElf, ""},
    {"!<arch>\n", FileFormat::kOther, "an archive"},
    {"PK\x03\x04", FileFormat::kOther, "a zip archive"},
    {"BC\xC0\xDE", FileFormat::kOther, "an LLVM bitcode file"},
    {"--- !tapi-tbd", FileFormat::kOther, "a text-based stub library"},
};

bool beginsWith(Bytes bytes, std::string_view magic) {
  return bytes.size() >= magic.size() &&
         std::equal(magic.begin(), magic.end(), bytes.begin(),
                    [](char one, std::byte other) { return static_cast<std::byte>(one) == other; });
}

const Magic* magicOf(Bytes beginning) {
  const auto* const found =
      std::find_if(std::begin(kMagics), std::end(kMagics),
                   [&](const Magic& magic) { return beginsWith(beginning, magic.bytes); });
  return found == std::end(kMagics) ? nullptr : found;
}

// The magic number of a 64-bit file ends with CF, that of a 32-bit one with CE. A little-endian
// file holds that byte first, a big-endian one last.
std::string describeMachO(Bytes beginning) {
  const bool bigEndian = beginning[0] == std::byte{0xFE};
  const bool has64Bits = beginning[bigEndian ? 3 : 0] == std::byte{0xCF};
  const std::string kind =
      fmt::format("a {}{}Mach-O file", has64Bits ? "" : "32-bit ", bigEndian ? "big-endian " : "");
  if (beginning.size() < sizeof(mach::Header)) return kind;
  ByteReader reader(beginning, "the file header");
  reader.skip(sizeof(std::uint32_t));
  mach::Processor processor{reader.read<std::int32_t>(), reader.read<std::int32_t>()};
  if (bigEndian) {
    processor = {mach::swapped(processor.type), mach::swapped(processor.subtype)};
  }
  return fmt::format("{} for {}", kind, processorName(processor));
}

std::string elfMachineName(std::uint16_t machine) {
  switch (machine) {
    case EM_386:
      return "i386";
    case EM_X86_64:
      return "x86_64";
    case EM_ARM:
      return "arm";
    case EM_AARCH64:
      return "arm64";
    default:
      return fmt::format("machine {}", machine);
  }
}

std::string elfKind(std::uint16_t type) {
  if (type == ET_REL) return "object file";
  return type == ET_EXEC ? "executable" : "file";
}

// Both word sizes have the type and the processor at the same place.
std::string describeElf(Bytes beginning) {
  if (beginning.size() < sizeof(Elf32_Ehdr)) return "an ELF file";
  ByteReader reader(beginning, "the file header", EI_NIDENT);
  const auto type = reader.read<std::uint16_t>();
  const auto machine = reader.read<std::uint16_t>();
  const bool has64Bits = beginning[EI_CLASS] == std::byte{ELFCLASS64};
  return fmt::format("{} ELF {} for {}", has64Bits ? "an" : "a 32-bit", elfKind(type),
                     elfMachineName(machine));
}

std::string describeUnknown(Bytes beginning) {
  if (beginning.empty()) return "an empty file";
  const bool isText = std::all_of(beginning.begin(), beginning.end(), [](std::byte byte) {
    const auto c = static_cast<unsigned char>(byte);
    return (c >= ' ' && c < 0x7F) || c == '\n' || c == '\r' || c == '\t';
  });
  return isText ? "a text file" : "a file of an unknown format";
}

}  // namespace

FileFormat formatOf(Bytes beginning) {
  const Magic* const magic = magicOf(beginning);
  return magic == nullptr ? FileFormat::kOther : magic->format;
}

std::string describeFile(Bytes beginning) {
  const Magic* const magic = magicOf(beginning);
  if (magic == nullptr) return describeUnknown(beginning);
  if (magic->format == FileFormat::kMachO) return describeMachO(beginning);
  if (magic->format == FileFormat::kElf) return describeElf(beginning);
  return std::string(magic->description);
}

std::vector<std::byte> beginningOf(const std::filesystem::path& file) {
  std::array<char, kTellingBytes> buffer{};
  std::ifstream in(file, std::ios::binary);
  in.read(buffer.data(), buffer.size());
  const Bytes read = std::as_bytes(std::span(buffer)).first(static_cast<std::size_t>(in.gcount()));
  return {read.begin(), read.end()};
}

std::string processorName(mach::Processor processor) {
  struct Name {
    mach::Processor processor;
    std::string_view text;
  };
  // Listed before its family's own name: what one subtype is called.
  static constexpr Name kSubtypes[] = {{{0x01000007, 8}, "x86_64h"}, {{0x0100000C, 2}, "arm64e"}};
  static constexpr Name kTypes[] = {
      {{7, 0}, "i386"},           {{0x01000007, 0}, "x86_64"},   {{12, 0}, "arm"},
      {{0x0100000C, 0}, "arm64"}, {{0x0200000C, 0}, "arm64_32"}, {{18, 0}, "ppc"},
      {{0x01000012, 0}, "ppc64"},
  };
  for (const Name& name : kSubtypes) {
    if (name.processor == mach::withoutCapabilities(processor)) return std::string(name.text);
  }
  for (const Name& name : kTypes) {
    if (name.processor.type == processor.type) return std::string(name.text);
  }
  return fmt::format("processor {:#x}", static_cast<std::uint32_t>(processor.type));
}

}  // namespace simulator
