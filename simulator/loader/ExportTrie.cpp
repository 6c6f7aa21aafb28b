#include "simulator/loader/ExportTrie.h"

#include <fmt/format.h>

#include <vector>

namespace simulator {

namespace {

constexpr std::string_view kExportTrie = "the export trie";
constexpr std::uint64_t kPublishedFlags = kExportThreadLocal | kExportAbsolute |
                                          kExportWeakDefinition | kExportFromOtherLibrary |
                                          kExportResolved;
constexpr std::size_t kLongestSymbol = 4096;

struct Node {
  std::uint64_t offset;
  std::string prefix;
};

[[noreturn]] void refuse(const Export& symbol) {
  throw LoadError(
      fmt::format("export {} of kind {:#x} is not supported", symbol.name, symbol.flags));
}

class TrieWalk {
 public:
  explicit TrieWalk(Bytes trie) : trie_(trie), seen_(trie.size()) {}

  std::vector<Export> run() {
    if (trie_.empty()) return {};
    pending_.push_back({0, ""});
    while (!pending_.empty()) {
      const Node node = std::move(pending_.back());
      pending_.pop_back();
      visit(node);
    }
    return std::move(exports_);
  }

 private:
  void visit(const Node& node) {
    if (node.offset >= trie_.size()) throw LoadError("the export trie points outside itself");
    if (seen_[node.offset]) throw LoadError("the export trie reaches a node twice");
    seen_[node.offset] = true;
    ByteReader reader(trie_, kExportTrie, node.offset);
    const std::uint64_t size = reader.readUleb();
    const std::size_t children = reader.position() + size;
    if (size > 0) readExport(reader, node.prefix);
    reader.seek(children);
    readChildren(reader, node.prefix);
  }

  void readExport(ByteReader& reader, const std::string& name) {
    Export symbol;
    symbol.name = name;
    symbol.flags = reader.readUleb();
    if ((symbol.flags & ~kPublishedFlags) != 0) refuse(symbol);
    symbol.offset = reader.readUleb();
    if ((symbol.flags & kExportFromOtherLibrary) != 0) symbol.importedName = reader.readText();
    exports_.push_back(std::move(symbol));
  }

  void readChildren(ByteReader& reader, const std::string& prefix) {
    const auto count = reader.read<std::uint8_t>();
    for (int i = 0; i < count; ++i) {
      std::string name = prefix + std::string(reader.readText());
      if (name.size() > kLongestSymbol) throw LoadError("an exported symbol has no end");
      pending_.push_back({reader.readUleb(), std::move(name)});
    }
  }

  Bytes trie_;
  std::vector<bool> seen_;
  std::vector<Node> pending_;
  std::vector<Export> exports_;
};

}  // namespace

std::vector<Export> readExports(Bytes trie) { return TrieWalk(trie).run(); }

std::map<std::string, std::uint64_t> readExportTrie(Bytes trie) {
  std::map<std::string, std::uint64_t> offsets;
  for (const Export& symbol : readExports(trie)) {
    if ((symbol.flags & ~std::uint64_t{kExportWeakDefinition}) != 0) refuse(symbol);
    offsets[symbol.name] = symbol.offset;
  }
  return offsets;
}

}  // namespace simulator
