#include "simulator/loader/ExportTrie.h"

#include <fmt/format.h>

#include <vector>

namespace simulator {

namespace {

constexpr std::string_view kExportTrie = "the export trie";
constexpr std::uint64_t kWeakDefinition = 0x4;
constexpr std::size_t kLongestSymbol = 4096;

struct Node {
  std::uint64_t offset;
  std::string prefix;
};

class TrieWalk {
 public:
  explicit TrieWalk(Bytes trie) : trie_(trie), seen_(trie.size()) {}

  std::map<std::string, std::uint64_t> run() {
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
    const std::uint64_t flags = reader.readUleb();
    if ((flags & ~kWeakDefinition) != 0) {
      throw LoadError(fmt::format("export {} of kind {:#x} is not supported", name, flags));
    }
    exports_[name] = reader.readUleb();
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
  std::map<std::string, std::uint64_t> exports_;
};

}  // namespace

std::map<std::string, std::uint64_t> readExportTrie(Bytes trie) { return TrieWalk(trie).run(); }

}  // namespace simulator
