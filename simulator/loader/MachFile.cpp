#include "simulator/loader/MachFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <utility>

#include "simulator/loader/FileKind.h"
#include "simulator/loader/UniversalFile.h"

namespace simulator {

namespace {

// Larger than any plug-in, yet small enough that a damaged size does no harm.
constexpr std::uint64_t kLargestImage = 256u << 20;

template <std::size_t size>
std::string fixedText(const char (&text)[size]) {
  return {text, std::find(text, text + size, '\0')};
}

std::string versionText(std::uint32_t version) {
  return fmt::format("{}.{}", version >> 16, (version >> 8) & 0xFF);
}

std::vector<std::byte> readBytes(const std::filesystem::path& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             &std::fclose);
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (!file || error) throw LoadError(fmt::format("{} cannot be read", path.string()));
  std::vector<std::byte> bytes(size);
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return bytes;
}

// The name of a load command that the loader refuses, for the error.
std::string commandName(std::uint32_t command) {
  static constexpr std::pair<std::uint32_t, std::string_view> kNames[] = {
      {0x4, "LC_THREAD"},
      {0x5, "LC_UNIXTHREAD"},
      {0xE, "LC_LOAD_DYLINKER"},
      {0x1, "LC_SEGMENT"},
      {0x1A, "LC_ROUTINES_64"},
      {mach::kLazyLoadDylib, "LC_LAZY_LOAD_DYLIB"},
      {0x2C, "LC_ENCRYPTION_INFO_64"},
      {0x2D, "LC_LINKER_OPTION"},
      {mach::kReexportDylib, "LC_REEXPORT_DYLIB"},
      {mach::kLoadUpwardDylib, "LC_LOAD_UPWARD_DYLIB"},
      {0x28 | mach::kRequiredByLoader, "LC_MAIN"},
      {mach::kDyldChainedFixups, "LC_DYLD_CHAINED_FIXUPS"},
  };
  for (const auto& [number, name] : kNames) {
    if (number == command) return fmt::format("{} ({:#x})", name, command);
  }
  return fmt::format("{:#x}", command);
}

std::string notSupported(std::uint32_t command) {
  std::string reason = fmt::format("load command {} is not supported", commandName(command));
  if (command == mach::kDyldChainedFixups) reason += "; link with -no_fixup_chains";
  return reason;
}

bool isSupported(std::uint32_t command) {
  switch (command) {
    case mach::kSegment64:
    case mach::kLoadDylib:
    case mach::kLoadWeakDylib:
    case mach::kDyldInfo:
    case mach::kDyldInfoOnly:
    case mach::kDyldExportsTrie:
    case mach::kVersionMinMacos:
    case mach::kBuildVersion:
    // Irrelevant to loading.
    case mach::kSymtab:
    case mach::kDysymtab:
    case mach::kIdDylib:
    case mach::kUuid:
    case mach::kRpath:
    case mach::kCodeSignature:
    case mach::kFunctionStarts:
    case mach::kDataInCode:
    case mach::kSourceVersion:
      return true;
    default:
      return false;
  }
}

std::uint32_t commandOf(Bytes command) {
  return ByteReader(command, "a load command").read<mach::LoadCommand>().command;
}

// The kind of file that a header's type stands for.
std::string typeName(std::uint32_t type) {
  static constexpr std::string_view kNames[] = {
      "an object file",
      "an executable",
      "a fixed library",
      "a core file",
      "a preloaded executable",
      "a dynamic library",
      "a dynamic linker",
      "a bundle",
      "a stub of a dynamic library",
      "a file of debug information",
      "a kernel extension",
      "a set of files",
  };
  if (type == 0 || type > std::size(kNames)) return fmt::format("a file of type {}", type);
  return std::string(kNames[type - 1]);
}

bool isKnownSectionType(std::uint32_t type) {
  return type <= mach::kCoalesced || type == mach::k16ByteLiterals ||
         type == mach::kInitFunctionOffsets;
}

bool hasNoContents(std::uint32_t type) {
  return type == mach::kZeroFill || type == mach::kLargeZeroFill ||
         type == mach::kThreadLocalZeroFill;
}

// The Objective-C runtime registers an image's classes and selectors from these sections. A plug-in
// that calls AppKit through C functions only has at most `__objc_imageinfo`.
bool needsObjectiveCRuntime(const Section& section) {
  return section.name.starts_with("__objc_") && section.name != "__objc_imageinfo";
}

}  // namespace

MachFile::MachFile(std::vector<std::byte> bytes, mach::Processor processor)
    : bytes_(std::move(bytes)), processor_(processor) {
  std::string subject = "the file";
  if (formatOf(bytes_) == FileFormat::kUniversal) {
    const Bytes slice = sliceFor(bytes_, processor);
    bytes_ = std::vector<std::byte>(slice.begin(), slice.end());
    subject = "the slice for " + processorName(processor);
  }
  readHeader(subject);
}

MachFile MachFile::open(const std::filesystem::path& path, mach::Processor processor) {
  return MachFile(readBytes(path), processor);
}

std::vector<mach::Processor> MachFile::processorsOf(const std::filesystem::path& path) {
  const std::vector<std::byte> bytes = readBytes(path);
  if (formatOf(bytes) == FileFormat::kUniversal) return processorsIn(bytes);
  mach::Header header{};
  if (formatOf(bytes) == FileFormat::kMachO) {
    header = ByteReader(bytes, "the file header").read<mach::Header>();
  }
  if (header.magic != mach::kMagic64) {
    throw LoadError(
        fmt::format("the file is {}; a 64-bit Mach-O file is needed", describeFile(bytes)));
  }
  return {mach::withoutCapabilities({header.cpuType, header.cpuSubtype})};
}

const Section* MachFile::findSection(std::string_view segment, std::string_view name) const {
  const auto found = std::find_if(sections_.begin(), sections_.end(), [&](const Section& section) {
    return section.segment == segment && section.name == name;
  });
  return found == sections_.end() ? nullptr : &*found;
}

Bytes MachFile::contents(const Segment& segment) const {
  return slice(bytes_, segment.fileOffset, segment.fileSize, segment.name);
}

Bytes MachFile::contents(const Section& section) const {
  if (hasNoContents(section.type)) return {};
  return slice(bytes_, section.fileOffset, section.size, section.name);
}

void MachFile::readHeader(const std::string& subject) {
  ByteReader reader(bytes_, "the file header");
  mach::Header header{};
  if (formatOf(bytes_) == FileFormat::kMachO) header = reader.read<mach::Header>();
  if (header.magic != mach::kMagic64 || header.cpuType != processor_.type) {
    throw LoadError(fmt::format("{} is {}; a 64-bit Mach-O file for {} is needed", subject,
                                describeFile(bytes_), processorName(processor_)));
  }
  if (header.fileType != mach::kTypeBundle && header.fileType != mach::kTypeDylib) {
    throw LoadError(fmt::format("{} is {}; a bundle or a dynamic library is needed", subject,
                                typeName(header.fileType)));
  }
  fileType_ = header.fileType;
  const Bytes commands = slice(bytes_, sizeof header, header.commandSize, "the load commands");
  ByteReader commandReader(commands, "the load commands");
  readCommands(commandReader, header.commandCount);
  if (segments_.empty()) throw LoadError("the file has no segments");
}

// Keeps the first reason.
void MachFile::refuse(std::string reason) {
  if (unsupported_.empty()) unsupported_ = std::move(reason);
}

void MachFile::readCommands(ByteReader& reader, std::uint32_t count) {
  std::vector<Bytes> commands;
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::size_t start = reader.position();
    const auto head = reader.read<mach::LoadCommand>();
    if (head.size < sizeof head) {
      throw LoadError(fmt::format("load command {} has a size of {}", i, head.size));
    }
    reader.seek(start);
    commands.push_back(reader.take(head.size));
    // Before what the commands hold: a command says more than a section that comes with it.
    if (!isSupported(head.command)) refuse(notSupported(head.command));
  }
  for (const Bytes command : commands) readCommand(command);
}

// Commands without a case are irrelevant to loading or not supported.
void MachFile::readCommand(Bytes command) {
  switch (commandOf(command)) {
    case mach::kSegment64:
      return readSegment(command);
    case mach::kLoadDylib:
    // The loader does not pass on these libraries' symbols; they count in ordinals all the same.
    case mach::kReexportDylib:
    case mach::kLoadUpwardDylib:
    case mach::kLazyLoadDylib:
      return readLibrary(command, false);
    case mach::kLoadWeakDylib:
      return readLibrary(command, true);
    case mach::kRpath:
      return readRunPath(command);
    case mach::kCodeSignature:
      codeSignature_ = ByteReader(command, "LC_CODE_SIGNATURE").read<mach::LinkDataCommand>().range;
      return;
    case mach::kDyldInfo:
    case mach::kDyldInfoOnly:
      return readDyldInfo(command);
    case mach::kDyldExportsTrie:
      dyldInfo_.exports =
          ByteReader(command, "LC_DYLD_EXPORTS_TRIE").read<mach::LinkDataCommand>().range;
      return;
    case mach::kVersionMinMacos:
      minimumSystem_ = versionText(
          ByteReader(command, "LC_VERSION_MIN_MACOSX").read<mach::VersionMinCommand>().version);
      return;
    case mach::kBuildVersion:
      minimumSystem_ = versionText(
          ByteReader(command, "LC_BUILD_VERSION").read<mach::BuildVersionCommand>().minimumSystem);
      return;
    default:
      return;
  }
}

void MachFile::readSegment(Bytes command) {
  ByteReader reader(command, "LC_SEGMENT_64");
  const auto record = reader.read<mach::SegmentCommand>();
  Segment segment;
  segment.name = fixedText(record.name);
  segment.address = record.address;
  segment.size = record.size;
  segment.fileOffset = record.fileOffset;
  segment.fileSize = record.fileSize;
  segment.protection = record.protection & 7;
  segment.readOnlyAfterFixups = (record.flags & mach::kSegmentReadOnly) != 0;
  addSegment(segment);
  for (std::uint32_t i = 0; i < record.sectionCount; ++i) readSection(reader, segment);
}

void MachFile::addSegment(Segment segment) {
  contents(segment);
  const std::uint64_t page = mach::pageSize(processor_);
  if (segment.address % page != 0 || segment.fileSize > segment.size ||
      segment.address > kLargestImage || segment.size > kLargestImage) {
    throw LoadError(fmt::format("segment {} has an impossible place or size", segment.name));
  }
  segment.size = (segment.size + page - 1) / page * page;
  for (const Segment& other : segments_) {
    if (segment.address < other.address + other.size &&
        other.address < segment.address + segment.size) {
      throw LoadError(fmt::format("segments {} and {} overlap", other.name, segment.name));
    }
  }
  imageSize_ = std::max(imageSize_, segment.address + segment.size);
  segments_.push_back(std::move(segment));
}

void MachFile::readSection(ByteReader& reader, const Segment& segment) {
  const auto record = reader.read<mach::SectionRecord>();
  Section section{segment.name, fixedText(record.name), record.address,
                  record.size,  record.fileOffset,      record.flags & mach::kSectionTypeMask};
  if (!isKnownSectionType(section.type) || needsObjectiveCRuntime(section)) {
    refuse(fmt::format("section {},{} (type {:#x}) is not supported", section.segment, section.name,
                       section.type));
  }
  const std::uint64_t offset = section.address - segment.address;
  if (section.address < segment.address || offset > segment.size ||
      section.size > segment.size - offset) {
    throw LoadError(fmt::format("section {} lies outside its segment", section.name));
  }
  contents(section);
  sections_.push_back(std::move(section));
}

void MachFile::readLibrary(Bytes command, bool weak) {
  const auto record = ByteReader(command, "a library's load command").read<mach::DylibCommand>();
  ByteReader name(command, "a library's name", record.nameOffset);
  libraries_.push_back({std::string(name.readText()), weak});
}

void MachFile::readRunPath(Bytes command) {
  const auto record = ByteReader(command, "LC_RPATH").read<mach::RunPathCommand>();
  runPaths_.emplace_back(ByteReader(command, "a run path", record.pathOffset).readText());
}

void MachFile::readDyldInfo(Bytes command) {
  dyldInfo_ = ByteReader(command, "LC_DYLD_INFO").read<mach::DyldInfoCommand>();
}

Bytes MachFile::linkData(const mach::FileRange& range, std::string_view what) const {
  return slice(bytes_, range.offset, range.size, what);
}

}  // namespace simulator
