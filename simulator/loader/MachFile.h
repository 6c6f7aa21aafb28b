// Parses and checks a Mach-O file before any part of it is mapped or run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/loader/ByteReader.h"
#include "simulator/loader/MachFormat.h"
#include "simulator/loader/OwnProcessor.h"

namespace simulator {

/// One segment; `address` counts from the image's start.
struct Segment {
  std::string name;
  std::uint64_t address = 0;
  std::uint64_t size = 0;
  std::uint64_t fileOffset = 0;
  std::uint64_t fileSize = 0;
  int protection = 0;  ///< PROT_… bits, which are the same on both systems
  bool readOnlyAfterFixups = false;
};

/// One section, which lies inside its segment; `address` counts from the image's start.
struct Section {
  std::string segment;
  std::string name;
  std::uint64_t address = 0;
  std::uint64_t size = 0;
  std::uint32_t fileOffset = 0;
  std::uint32_t type = 0;
};

/// A library that a load command asks for.
struct Library {
  std::string name;
  bool weak = false;  ///< may be absent; its symbols are then null
};

/// A 64-bit bundle or dynamic library for one processor. [any-thread]
class MachFile {
 public:
  /// Parses `bytes`, which may hold anything; of a universal file, the slice for `processor`. A
  /// LoadError names what the file is if it is something else, or what is damaged.
  explicit MachFile(std::vector<std::byte> bytes, mach::Processor processor = ownProcessor());

  /// Reads and parses a file. A LoadError also if it cannot be read.
  static MachFile open(const std::filesystem::path& path,
                       mach::Processor processor = ownProcessor());

  /// The processors that a file has code for, in its order: one, or those of a universal file's
  /// table. A LoadError as for `open`; what a slice holds is not checked.
  static std::vector<mach::Processor> processorsOf(const std::filesystem::path& path);

  /// The processor that the file is for, as it was asked for.
  mach::Processor processor() const { return processor_; }

  /// What keeps an intact file from being loaded, such as "load command LC_MAIN (0x80000028) is not
  /// supported"; empty if nothing does. Of several reasons the first one, load commands before
  /// sections.
  const std::string& unsupported() const { return unsupported_; }

  const std::vector<Segment>& segments() const { return segments_; }
  const std::vector<Section>& sections() const { return sections_; }

  /// In the order of their load commands: ordinal 1 is the first.
  const std::vector<Library>& libraries() const { return libraries_; }

  /// The section of that name; null if the file has none.
  const Section* findSection(std::string_view segment, std::string_view name) const;

  /// Bytes from the image's start to the end of the last segment, in whole pages.
  std::uint64_t imageSize() const { return imageSize_; }

  Bytes rebaseOpcodes() const { return linkData(dyldInfo_.rebase, "rebase opcodes"); }
  Bytes bindOpcodes() const { return linkData(dyldInfo_.bind, "bind opcodes"); }
  Bytes weakBindOpcodes() const { return linkData(dyldInfo_.weakBind, "weak bind opcodes"); }
  Bytes lazyBindOpcodes() const { return linkData(dyldInfo_.lazyBind, "lazy bind opcodes"); }
  Bytes exportTrie() const { return linkData(dyldInfo_.exports, "export trie"); }
  /// Empty if the file is not signed.
  Bytes codeSignature() const { return linkData(codeSignature_, "code signature"); }

  /// The segment's bytes in the file; the rest of its size is zero.
  Bytes contents(const Segment& segment) const;
  /// The section's bytes in the file; empty if it is zero-filled.
  Bytes contents(const Section& section) const;

  std::uint32_t fileType() const { return fileType_; }

  /// The folders in which libraries named by "@rpath" are looked for.
  const std::vector<std::string>& runPaths() const { return runPaths_; }

  /// The oldest macOS version that the file supports, such as "10.13"; empty if it names none.
  const std::string& minimumSystem() const { return minimumSystem_; }

 private:
  void readHeader(const std::string& subject);
  void readCommands(ByteReader& reader, std::uint32_t count);
  void readCommand(Bytes command);
  void readSegment(Bytes command);
  void readSection(ByteReader& reader, const Segment& segment);
  void readLibrary(Bytes command, bool weak);
  void readDyldInfo(Bytes command);
  void readRunPath(Bytes command);
  void addSegment(Segment segment);
  void refuse(std::string reason);
  Bytes linkData(const mach::FileRange& range, std::string_view what) const;

  std::vector<std::byte> bytes_;
  mach::Processor processor_;
  std::vector<Segment> segments_;
  std::vector<Section> sections_;
  std::vector<Library> libraries_;
  mach::DyldInfoCommand dyldInfo_{};
  mach::FileRange codeSignature_;
  std::uint64_t imageSize_ = 0;
  std::uint32_t fileType_ = 0;
  std::string minimumSystem_;
  std::vector<std::string> runPaths_;
  std::string unsupported_;
};

}  // namespace simulator
