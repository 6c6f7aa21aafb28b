// Random descriptors of every item type that the generator can rebuild.
#pragma once

#include <random>
#include <string>

#include "simulator/host/Host.h"

/// Makes a sequence of descriptors that depends on `seed` only. Aliases, paths and bookmarks refer
/// to `file`. A descriptor has at most one alias or path and at most one bookmark, because the
/// generated code has one variable for all aliases and one for all bookmarks.
class RandomDescriptor {
 public:
  RandomDescriptor(std::uint32_t seed, std::string file) : random_(seed), file_(std::move(file)) {}

  simulator::ContainerPtr make();

 private:
  std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
  bool oneIn(std::uint32_t n) { return below(n) == 0; }

  simulator::ContainerPtr container(int depth, bool keyed);
  simulator::Item item(int depth);
  simulator::Item leaf();
  simulator::Item fileItem();
  simulator::Reference reference();
  simulator::Form form();
  std::uint32_t id();
  std::uint32_t code();
  double number();
  std::int64_t integer();
  std::string text();
  std::string bytes();

  std::mt19937 random_;
  std::string file_;
  bool hasAlias_ = false;
  bool hasBookmark_ = false;
};

/// The descriptor that the generated code makes for `container`: floats have six significant
/// digits, global classes are classes, paths are aliases, and raw data is as many zero bytes.
simulator::ContainerPtr rebuilt(const simulator::Container& container);
