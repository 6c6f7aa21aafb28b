#include <gtest/gtest.h>

#include <string>

#include "simulator/loader/ExportTrie.h"

namespace simulator {
namespace {

std::map<std::string, std::uint64_t> exports(std::string_view trie) {
  return readExportTrie(std::as_bytes(std::span(trie.data(), trie.size())));
}

// A root without an export, followed by its only child.
std::string trieWithOneChild(const std::string& label, const std::string& node) {
  std::string trie = {'\x00', '\x01'};
  trie += label;
  trie += '\0';
  trie += static_cast<char>(trie.size() + 1);
  return trie + node;
}

std::string node(std::initializer_list<char> bytes) { return {bytes.begin(), bytes.end()}; }

TEST(ExportTrie, ExportsNothingIfEmpty) { EXPECT_TRUE(exports("").empty()); }

TEST(ExportTrie, JoinsThePartsOfASymbol) {
  const std::string trie = trieWithOneChild(
      "_ab", node({0x02, 0x00, 0x10, 0x01, 'c', 0x00, 0x0E, 0x02, 0x00, 0x20, 0x00}));
  const auto all = exports(trie);
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all.at("_ab"), 0x10u);
  EXPECT_EQ(all.at("_abc"), 0x20u);
}

TEST(ExportTrie, AcceptsWeakDefinitions) {
  EXPECT_EQ(exports(trieWithOneChild("_w", node({0x02, 0x04, 0x30, 0x00}))).at("_w"), 0x30u);
}

TEST(ExportTrie, RefusesOtherKindsOfExports) {
  for (const char flags : {'\x01', '\x02', '\x08', '\x10'}) {
    EXPECT_THROW(exports(trieWithOneChild("_x", node({0x02, flags, 0x30, 0x00}))), LoadError);
  }
}

TEST(ExportTrie, ReadsEveryPublishedKindOfExport) {
  const auto read = [](const std::string& node) {
    const std::string trie = trieWithOneChild("_x", node);
    return readExports(std::as_bytes(std::span(trie))).at(0);
  };
  EXPECT_EQ(read(node({0x02, 0x01, 0x30, 0x00})).flags, kExportThreadLocal);
  EXPECT_EQ(read(node({0x02, 0x02, 0x30, 0x00})).offset, 0x30U);
  EXPECT_EQ(read(node({0x03, 0x10, 0x30, 0x40, 0x00})).offset, 0x30U);
  const Export same = read(node({0x03, 0x08, 0x02, 0x00, 0x00}));
  EXPECT_EQ(same.offset, 2U);
  EXPECT_EQ(same.importedName, "");
  EXPECT_EQ(read(node({0x05, 0x08, 0x02, '_', 'y', 0x00, 0x00})).importedName, "_y");
  EXPECT_THROW(read(node({0x02, 0x20, 0x30, 0x00})), LoadError);
}

TEST(ExportTrie, RefusesATreeWithACycle) {
  EXPECT_THROW(exports(node({0x00, 0x01, 'a', 0x00, 0x00})), LoadError);
}

TEST(ExportTrie, RefusesANodeOutsideTheTree) {
  EXPECT_THROW(exports(node({0x00, 0x01, 'a', 0x00, 0x7F})), LoadError);
}

}  // namespace
}  // namespace simulator
