// The .tbd files are allow-lists: each contains exactly the symbols that the bundle uses from the
// library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <string>

#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/FileKind.h"
#include "simulator/loader/MachFile.h"
#include "tests/packaging/Bundle.h"

namespace {

using SymbolsByLibrary = std::map<std::string, std::set<std::string>>;

SymbolsByLibrary imports(simulator::mach::Processor processor) {
  const auto file = simulator::MachFile::open(bundleFile("MacOS/MrvPhotoshop"), processor);
  SymbolsByLibrary symbols;
  const auto add = [&](simulator::Bytes opcodes, simulator::BindKind kind) {
    for (const simulator::Bind& bind : simulator::readBinds(opcodes, kind, 10000)) {
      const auto library = file.libraries().at(static_cast<std::size_t>(bind.ordinal - 1));
      symbols[library.name].insert(bind.symbol);
    }
  };
  add(file.bindOpcodes(), simulator::BindKind::kRegular);
  add(file.lazyBindOpcodes(), simulator::BindKind::kLazy);
  return symbols;
}

// Adds the symbols that the stub lists for the target.
void addStub(const std::filesystem::path& path, const std::string& target,
             SymbolsByLibrary& symbols) {
  const std::string text = readText(path);
  std::smatch name;
  ASSERT_TRUE(std::regex_search(text, name, std::regex("install-name: '([^']+)'"))) << path;
  const std::regex line("\n  - targets: (.*)|\n      - (\\S+)");
  bool listed = false;
  for (std::sregex_iterator i(text.begin(), text.end(), line), end; i != end; ++i) {
    if ((*i)[1].matched) {
      listed = (*i)[1].str().find(" " + target) != std::string::npos;
    } else if (listed) {
      symbols[name[1]].insert((*i)[2]);
    }
  }
}

SymbolsByLibrary stubs(const std::string& target) {
  SymbolsByLibrary symbols;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(MRV_PACKAGING "/macos")) {
    if (entry.path().extension() == ".tbd") addStub(entry.path(), target, symbols);
  }
  return symbols;
}

TEST(Stubs, ListExactlyWhatTheBundleUsesOnEachProcessor) {
  for (const auto processor : {simulator::mach::kX86_64, simulator::mach::kArm64}) {
    const std::string name = simulator::processorName(processor);
    SCOPED_TRACE(name);
    const SymbolsByLibrary used = imports(processor);
    SymbolsByLibrary listed = stubs(name + "-macos");
    EXPECT_EQ(listed.size(), used.size());
    for (const auto& [library, symbols] : used) {
      EXPECT_THAT(listed[library], testing::UnorderedElementsAreArray(symbols)) << library;
    }
  }
}

}  // namespace
