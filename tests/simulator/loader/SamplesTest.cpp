// Mac files that other linkers made: the tables that the loader reads agree with what llvm-objdump
// prints. The environment variable MRV_MAC_SAMPLES names a folder of such files; without it the
// test is skipped. The files are read, never run.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/ExportTrie.h"
#include "simulator/loader/FileKind.h"
#include "simulator/loader/MachFile.h"
#include "tests/support/Process.h"

namespace simulator {
namespace {

constexpr const char* kObjdump = "llvm-objdump-19";
constexpr std::size_t kNoLimit = SIZE_MAX;

using Rows = std::vector<std::string>;

std::string place(const MachFile& file, const FixupPlace& fixup) {
  const Segment& segment = file.segments().at(fixup.segment);
  return fmt::format("{} 0x{:08X}", segment.name, segment.address + fixup.offset);
}

// The name by which llvm-objdump shortens a library's path: without its extension and its version
// of one letter.
std::string shortName(const std::string& path) {
  std::filesystem::path name = std::filesystem::path(path).filename();
  if (name.extension() == ".dylib") name = name.stem();
  return name.extension().string().size() == 2 ? name.stem() : name;
}

std::string libraryName(const MachFile& file, std::int64_t ordinal) {
  switch (ordinal) {
    case kOrdinalSelf:
      return "this-image";
    case kOrdinalMainExecutable:
      return "main-executable";
    case kOrdinalFlatLookup:
      return "flat-namespace";
    case kOrdinalWeakLookup:
      return "weak";
    default:
      return shortName(file.libraries().at(static_cast<std::size_t>(ordinal - 1)).name);
  }
}

Rows rebases(const MachFile& file) {
  Rows rows;
  for (const FixupPlace& fixup : readRebases(file.rebaseOpcodes(), kNoLimit)) {
    rows.push_back(place(file, fixup) + " pointer");
  }
  return rows;
}

Rows binds(const MachFile& file) {
  Rows rows;
  for (const Bind& bind : readBinds(file.bindOpcodes(), BindKind::kRegular, kNoLimit)) {
    rows.push_back(fmt::format("{} pointer {} {} {}{}", place(file, bind.place), bind.addend,
                               libraryName(file, bind.ordinal), bind.symbol,
                               bind.weakImport ? " (weak_import)" : ""));
  }
  return rows;
}

Rows lazyBinds(const MachFile& file) {
  Rows rows;
  for (const Bind& bind : readBinds(file.lazyBindOpcodes(), BindKind::kLazy, kNoLimit)) {
    rows.push_back(fmt::format("{} {} {}", place(file, bind.place), libraryName(file, bind.ordinal),
                               bind.symbol));
  }
  return rows;
}

Rows weakBinds(const MachFile& file) {
  Rows rows;
  for (const Bind& bind : readBinds(file.weakBindOpcodes(), BindKind::kWeak, kNoLimit)) {
    rows.push_back(bind.strongDefinition ? "strong " + bind.symbol
                                         : fmt::format("{} pointer {} {}", place(file, bind.place),
                                                       bind.addend, bind.symbol));
  }
  return rows;
}

std::string exportRow(const MachFile& file, const Export& symbol) {
  if ((symbol.flags & kExportFromOtherLibrary) != 0) {
    std::string from = libraryName(file, static_cast<std::int64_t>(symbol.offset));
    if (!symbol.importedName.empty()) from = symbol.importedName + " from " + from;
    return fmt::format("[re-export] {} ({})", symbol.name, from);
  }
  std::vector<std::string> marks;
  if ((symbol.flags & kExportWeakDefinition) != 0) marks.emplace_back("weak_def");
  if ((symbol.flags & kExportThreadLocal) != 0) marks.emplace_back("per-thread");
  if ((symbol.flags & kExportAbsolute) != 0) marks.emplace_back("absolute");
  std::string row = fmt::format("0x{:08X} {}", symbol.offset, symbol.name);
  for (std::size_t i = 0; i < marks.size(); ++i) row += (i == 0 ? " [" : ", ") + marks[i];
  return marks.empty() ? row : row + "]";
}

Rows exported(const MachFile& file) {
  Rows rows;
  for (const Export& symbol : readExports(file.exportTrie())) {
    rows.push_back(exportRow(file, symbol));
  }
  return rows;
}

// The words of a row without the section's name, which the opcodes do not hold.
std::string withoutSection(const std::string& line) {
  std::istringstream in(line);
  std::string segment;
  std::string section;
  in >> segment >> section;
  std::string row = segment;
  for (std::string word; in >> word;) row += " " + word;
  return row;
}

std::string joined(const std::string& line) {
  std::istringstream in(line);
  std::string row;
  for (std::string word; in >> word;) row += (row.empty() ? "" : " ") + word;
  return row;
}

struct Table {
  const char* option;
  Rows (*read)(const MachFile& file);
  std::string (*row)(const std::string& line);
};

constexpr Table kTables[] = {
    {"--rebase", rebases, withoutSection},      {"--bind", binds, withoutSection},
    {"--lazy-bind", lazyBinds, withoutSection}, {"--weak-bind", weakBinds, withoutSection},
    {"--exports-trie", exported, joined},
};

// The rows that llvm-objdump prints of one table: what follows its title and the names of columns.
Rows printed(const std::string& file, const Table& table) {
  const testing_support::Finished finished =
      testing_support::run({kObjdump, "--macho", "--arch=x86_64", table.option, file});
  EXPECT_EQ(finished.status, 0) << finished.errors;
  std::istringstream out(finished.output);
  Rows rows;
  bool inTable = false;
  for (std::string line; std::getline(out, line);) {
    if (line.ends_with(" table:") || line == "Exports trie:") {
      inTable = true;
    } else if (inTable && !line.empty() && !line.starts_with("segment ")) {
      rows.push_back(table.row(line));
    }
  }
  return rows;
}

// Shows the first difference only: the tables have thousands of rows.
void expectSame(Rows read, Rows expected, const std::string& what) {
  std::sort(read.begin(), read.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(read.size(), expected.size()) << what;
  const auto [one, other] =
      std::mismatch(read.begin(), read.end(), expected.begin(), expected.end());
  EXPECT_EQ(one == read.end() ? "the end" : *one, other == expected.end() ? "the end" : *other)
      << what;
}

struct Tally {
  int compared = 0;
  std::size_t rows = 0;
};

void compareTables(const std::string& path, const MachFile& file, Tally& tally) {
  for (const Table& table : kTables) {
    const Rows read = table.read(file);
    expectSame(read, printed(path, table), path + " " + table.option);
    tally.rows += read.size();
  }
  ++tally.compared;
}

void judge(const std::string& path, Tally& tally) try {
  const MachFile file = MachFile::open(path);
  fmt::print("{}: {}\n", path, file.unsupported().empty() ? "supported" : file.unsupported());
  compareTables(path, file, tally);
} catch (const LoadError& error) {
  fmt::print("{}: {}\n", path, error.what());
  const std::string text = error.what();
  EXPECT_TRUE(text.ends_with("is needed")) << path << ": " << text;
}

TEST(Samples, HaveTheTablesThatTheReferenceReads) {
  const char* const folder = std::getenv("MRV_MAC_SAMPLES");
  if (folder == nullptr) GTEST_SKIP() << "MRV_MAC_SAMPLES names no folder";
  Tally tally;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) judge(entry.path(), tally);
  }
  fmt::print("{} files, {} rows compared\n", tally.compared, tally.rows);
  EXPECT_GE(tally.compared, 10);
}

}  // namespace
}  // namespace simulator
