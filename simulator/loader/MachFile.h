// A Mach-O file taken apart and checked: what is where, before anything of it is mapped or run.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "simulator/loader/ByteReader.h"
#include "simulator/loader/MachFormat.h"

namespace simulator {

/// One segment. Its pages lie at `address` beyond the place where the image goes.
struct Segment {
  std::string name;
  std::uint64_t address = 0;
  std::uint64_t size = 0;
  std::uint64_t fileOffset = 0;
  std::uint64_t fileSize = 0;
  int protection = 0;  ///< PROT_… bits; they are the same on both systems
  bool readOnlyAfterFixups = false;
};

/// One section of a segment; it lies inside of it.
struct Section {
  std::string segment;
  std::string name;
  std::uint64_t address = 0;
  std::uint64_t size = 0;
  std::uint32_t fileOffset = 0;
  std::uint32_t type = 0;
};

/// One load command that asks for a library.
struct Library {
  std::string name;
  bool weak = false;  ///< may be absent: its symbols are then null
};

/// A thin 64-bit Intel bundle or library. Parsing refuses, by name, whatever the loader does not
/// know: a LoadError says what. [any-thread]
class MachFile {
 public:
  /// REQUIRES: nothing of the bytes; they may be anything.
  explicit MachFile(std::vector<std::byte> bytes);

  /// Reads the file first; a LoadError where it cannot be read.
  static MachFile open(const std::filesystem::path& path);

  const std::vector<Segment>& segments() const { return segments_; }
  const std::vector<Section>& sections() const { return sections_; }

  /// In the order of their load commands: ordinal 1 is the first.
  const std::vector<Library>& libraries() const { return libraries_; }

  /// The section, null where the file has none of that name.
  const Section* findSection(std::string_view segment, std::string_view name) const;

  /// From the first segment's first byte to the last one's end, whole pages.
  std::uint64_t imageSize() const { return imageSize_; }

  Bytes rebaseOpcodes() const { return linkData(dyldInfo_.rebase, "rebase opcodes"); }
  Bytes bindOpcodes() const { return linkData(dyldInfo_.bind, "bind opcodes"); }
  Bytes weakBindOpcodes() const { return linkData(dyldInfo_.weakBind, "weak bind opcodes"); }
  Bytes lazyBindOpcodes() const { return linkData(dyldInfo_.lazyBind, "lazy bind opcodes"); }
  Bytes exportTrie() const { return linkData(dyldInfo_.exports, "export trie"); }

  /// What the segment has in the file; the rest of its size is zero.
  Bytes contents(const Segment& segment) const;
  Bytes contents(const Section& section) const;

  std::uint32_t fileType() const { return fileType_; }

  /// The oldest system that the file is for, as "10.13"; empty where it does not say.
  const std::string& minimumSystem() const { return minimumSystem_; }

 private:
  void readHeader();
  void readCommands(ByteReader& reader, std::uint32_t count);
  void readCommand(Bytes command);
  void readSegment(Bytes command);
  void readSection(ByteReader& reader, const Segment& segment);
  void readLibrary(Bytes command, bool weak);
  void readDyldInfo(Bytes command);
  void addSegment(Segment segment);
  Bytes linkData(const mach::FileRange& range, std::string_view what) const;

  std::vector<std::byte> bytes_;
  std::vector<Segment> segments_;
  std::vector<Section> sections_;
  std::vector<Library> libraries_;
  mach::DyldInfoCommand dyldInfo_{};
  std::uint64_t imageSize_ = 0;
  std::uint32_t fileType_ = 0;
  std::string minimumSystem_;
};

}  // namespace simulator
