// Recognises files by their first bytes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/loader/ByteReader.h"
#include "simulator/loader/MachFormat.h"

namespace simulator {

enum class FileFormat {
  kMachO,      ///< of either word size and byte order
  kUniversal,  ///< several Mach-O files behind one table
  kElf,
  kOther
};

/// The format of a file that begins with these bytes; four are enough. [any-thread]
FileFormat formatOf(Bytes beginning);

/// As many bytes as `describeFile` needs.
inline constexpr std::size_t kTellingBytes = 64;

/// What a file that begins with these bytes is, for errors: "a 32-bit Mach-O file for i386", "an
/// archive", "a file of an unknown format". [any-thread]
std::string describeFile(Bytes beginning);

/// The first `kTellingBytes` bytes of a file, or fewer; none if it cannot be read. [any-thread]
std::vector<std::byte> beginningOf(const std::filesystem::path& file);

/// The platform's name of a processor, such as "x86_64" or "arm64e"; a number if it has none.
/// [any-thread]
std::string processorName(mach::Processor processor);

}  // namespace simulator
