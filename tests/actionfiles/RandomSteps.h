// Random steps of every item type and every form of a reference.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <utility>

#include "tests/actionfiles/ActionFileWriter.h"

namespace testing_support {

/// Makes a sequence that depends on the arguments only. Nesting reaches `deepest` levels below the
/// descriptor of a step. If `file` is given, the steps hold only what a host's suites can put:
/// paths are that file's, which exists, aliases and bookmarks look like those of a host, and there
/// are no object arrays and no lists of numbers with a unit.
class RandomSteps {
 public:
  explicit RandomSteps(std::uint32_t seed, int deepest = 3, std::string file = "")
      : random_(seed), deepest_(deepest), file_(std::move(file)) {}

  actionfiles::Step step();

  /// A set with `count` steps in actions of at most seven.
  RecordedSet set(std::size_t count);

 private:
  std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
  bool oneIn(std::uint32_t n) { return below(n) == 0; }

  actionfiles::Id id();
  actionfiles::Text text();
  actionfiles::ClassName type();
  double number();
  std::string bytes(std::uint32_t most);
  actionfiles::Descriptor descriptor(int level);
  actionfiles::Value value(int level);
  actionfiles::Value leaf();
  actionfiles::Value leafOfAHost();
  actionfiles::Reference reference();
  actionfiles::UnitFloats floats();

  std::mt19937 random_;
  int deepest_;
  std::string file_;
};

}  // namespace testing_support
