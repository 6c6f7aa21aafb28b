// The records of a Mach-O file that the loader reads, as the platform publishes them in
// <mach-o/loader.h>, <mach-o/fat.h> and <mach/machine.h>.
#pragma once

#include <cstdint>

namespace simulator::mach {

inline constexpr std::uint32_t kMagic64 = 0xFEEDFACF;
inline constexpr std::uint32_t kUniversalMagic = 0xCAFEBABE;
inline constexpr std::uint32_t kUniversalMagic64 = 0xCAFEBABF;
inline constexpr std::uint32_t kTypeDylib = 6;
inline constexpr std::uint32_t kTypeBundle = 8;

/// A processor as headers and the tables of universal files name it: `cputype` and `cpusubtype`.
struct Processor {
  std::int32_t type = 0;
  std::int32_t subtype = 0;
  bool operator==(const Processor&) const = default;
};

inline constexpr Processor kX86_64{0x01000007, 3};
inline constexpr Processor kArm64{0x0100000C, 0};

/// The processor without the flags in the subtype's highest byte (CPU_SUBTYPE_MASK).
constexpr Processor withoutCapabilities(Processor processor) {
  return {processor.type, processor.subtype & 0x00FFFFFF};
}

/// A code signature begins with this number, big-endian (CSMAGIC_EMBEDDED_SIGNATURE).
inline constexpr std::uint32_t kSignatureMagic = 0xFADE0CC0;

/// What segments and the slices of universal files are aligned to: a page of that processor.
constexpr std::uint64_t pageSize(Processor processor) {
  return processor.type == kArm64.type ? 0x4000 : 0x1000;
}

/// The number with its bytes in reverse order.
template <class T>
constexpr T swapped(T number) {
  T result = 0;
  for (unsigned i = 0; i < sizeof number; ++i) {
    const auto byte = (static_cast<std::uint64_t>(number) >> (8 * i)) & 0xFF;
    result =
        static_cast<T>(static_cast<std::uint64_t>(result) | byte << (8 * (sizeof number - 1 - i)));
  }
  return result;
}

/// A universal file begins with this record; its numbers are big-endian.
struct UniversalHeader {
  std::uint32_t magic;
  std::uint32_t sliceCount;
};

/// A row of a universal file's table (`fat_arch`, `fat_arch_64`). `alignment` is a power of two.
struct SliceRecord {
  std::int32_t cpuType;
  std::int32_t cpuSubtype;
  std::uint32_t offset;
  std::uint32_t size;
  std::uint32_t alignment;
};

struct SliceRecord64 {
  std::int32_t cpuType;
  std::int32_t cpuSubtype;
  std::uint64_t offset;
  std::uint64_t size;
  std::uint32_t alignment;
  std::uint32_t reserved;
};

struct Header {
  std::uint32_t magic;
  std::int32_t cpuType;
  std::int32_t cpuSubtype;
  std::uint32_t fileType;
  std::uint32_t commandCount;
  std::uint32_t commandSize;
  std::uint32_t flags;
  std::uint32_t reserved;
};

struct LoadCommand {
  std::uint32_t command;
  std::uint32_t size;
};

inline constexpr std::uint32_t kRequiredByLoader = 0x80000000;

enum Command : std::uint32_t {
  kSymtab = 0x2,
  kDysymtab = 0xB,
  kLoadDylib = 0xC,
  kIdDylib = 0xD,
  kLoadWeakDylib = 0x18 | kRequiredByLoader,
  kReexportDylib = 0x1F | kRequiredByLoader,
  kLazyLoadDylib = 0x20,
  kLoadUpwardDylib = 0x23 | kRequiredByLoader,
  kSegment64 = 0x19,
  kUuid = 0x1B,
  kRpath = 0x1C | kRequiredByLoader,
  kCodeSignature = 0x1D,
  kDyldInfo = 0x22,
  kDyldInfoOnly = 0x22 | kRequiredByLoader,
  kVersionMinMacos = 0x24,
  kFunctionStarts = 0x26,
  kDataInCode = 0x29,
  kSourceVersion = 0x2A,
  kBuildVersion = 0x32,
  kDyldExportsTrie = 0x33 | kRequiredByLoader,
  kDyldChainedFixups = 0x34 | kRequiredByLoader,
};

struct SegmentCommand {
  LoadCommand head;
  char name[16];
  std::uint64_t address;
  std::uint64_t size;
  std::uint64_t fileOffset;
  std::uint64_t fileSize;
  std::int32_t maximumProtection;
  std::int32_t protection;
  std::uint32_t sectionCount;
  std::uint32_t flags;
};

inline constexpr std::uint32_t kSegmentReadOnly = 0x10;  ///< read-only once fixups are applied

struct SectionRecord {
  char name[16];
  char segment[16];
  std::uint64_t address;
  std::uint64_t size;
  std::uint32_t fileOffset;
  std::uint32_t alignment;
  std::uint32_t relocationOffset;
  std::uint32_t relocationCount;
  std::uint32_t flags;
  std::uint32_t reserved[3];
};

inline constexpr std::uint32_t kSectionTypeMask = 0xFF;

enum SectionType : std::uint32_t {
  kRegular = 0,
  kZeroFill = 1,
  kCStringLiterals = 2,
  k4ByteLiterals = 3,
  k8ByteLiterals = 4,
  kLiteralPointers = 5,
  kNonLazySymbolPointers = 6,
  kLazySymbolPointers = 7,
  kSymbolStubs = 8,
  kModInitPointers = 9,
  kModTermPointers = 10,
  kCoalesced = 11,
  kLargeZeroFill = 12,
  k16ByteLiterals = 14,
  kThreadLocalZeroFill = 0x12,
  kInitFunctionOffsets = 0x16,
};

struct DylibCommand {
  LoadCommand head;
  std::uint32_t nameOffset;
  std::uint32_t timestamp;
  std::uint32_t currentVersion;
  std::uint32_t compatibilityVersion;
};

/// The path of LC_RPATH.
struct RunPathCommand {
  LoadCommand head;
  std::uint32_t pathOffset;
};

struct FileRange {
  std::uint32_t offset = 0;
  std::uint32_t size = 0;
};

struct DyldInfoCommand {
  LoadCommand head;
  FileRange rebase;
  FileRange bind;
  FileRange weakBind;
  FileRange lazyBind;
  FileRange exports;
};

/// A command that points into the link data, such as LC_DYLD_EXPORTS_TRIE.
struct LinkDataCommand {
  LoadCommand head;
  FileRange range;
};

struct VersionMinCommand {
  LoadCommand head;
  std::uint32_t version;  ///< xxxx.yy.zz in fields of 16, 8 and 8 bits
  std::uint32_t sdk;
};

struct BuildVersionCommand {
  LoadCommand head;
  std::uint32_t platform;
  std::uint32_t minimumSystem;
  std::uint32_t sdk;
  std::uint32_t toolCount;
};

}  // namespace simulator::mach
