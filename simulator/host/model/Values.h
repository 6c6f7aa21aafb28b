// What descriptors, lists and references hold: plain values without handles.
//
// Containers are shared and copied when one of several holders writes, so that putting one into
// another and reading it back costs nothing, however deep they nest.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "platform/host/HostTerms.h"

namespace simulator {

struct Container;
using ContainerPtr = std::shared_ptr<Container>;
using NestedContainer = std::shared_ptr<const Container>;

/// One form of a reference. Which members count depends on `form`.
struct Form {
  DescriptorFormID form = 0;
  DescriptorClassID desiredClass = 0;
  DescriptorEnumTypeID enumType = 0;  ///< of kFormEnumerated
  std::uint32_t value = 0;            ///< enumeration value, key, index, identifier or offset
  std::string name = {};              ///< of kFormName

  bool operator==(const Form&) const = default;
};

/// Forms in the order in which they were put: each is found in what the rest names.
using Reference = std::vector<Form>;

struct UnitFloat {
  DescriptorUnitID unit;
  double value;
  bool operator==(const UnitFloat&) const = default;
};

struct Enumerated {
  DescriptorEnumTypeID type;
  DescriptorEnumID value;
  bool operator==(const Enumerated&) const = default;
};

struct ClassID {
  DescriptorClassID id;
  bool operator==(const ClassID&) const = default;
};

struct Object {
  DescriptorClassID type;
  NestedContainer content;
};

struct List {
  NestedContainer content;
};

/// UTF-8.
struct Text {
  std::string utf8;
  bool operator==(const Text&) const = default;
};

/// The file behind an alias, a path or a bookmark.
struct FilePath {
  std::string path;
  bool operator==(const FilePath&) const = default;
};

struct Data {
  std::string bytes;
  bool operator==(const Data&) const = default;
};

/// std::monostate: an item of a type that only has its code.
using Value = std::variant<std::monostate, std::int32_t, std::int64_t, double, bool, UnitFloat,
                           Enumerated, ClassID, Object, List, Reference, Text, FilePath, Data>;

struct Item {
  DescriptorTypeID type;
  Value value;
};

struct Entry {
  DescriptorKeyID key;  ///< 0 in a list
  Item item;
};

/// A descriptor, whose keys differ, or a list, which has none.
struct Container {
  std::vector<Entry> entries;

  Container() = default;
  explicit Container(std::vector<Entry> initial) : entries(std::move(initial)) {}
  Container(const Container&) = default;
  Container(Container&&) = default;
  Container& operator=(const Container&) = delete;
  ~Container();

  /// Takes constant time: a million items can be looked up one by one.
  const Item* find(DescriptorKeyID key) const;
  /// Replaces the item under `key` in its place, or appends one.
  void put(DescriptorKeyID key, Item item);
  /// False where there is no such key.
  bool erase(DescriptorKeyID key);
  void clear();

 private:
  std::size_t placeOf(DescriptorKeyID key) const;

  // The places of the first `indexed_` entries. Entries may be appended without it, but removed
  // only by the members above.
  mutable std::unordered_map<DescriptorKeyID, std::size_t> places_;
  mutable std::size_t indexed_ = 0;
  mutable std::size_t lastFound_ = 0;
};

/// The container inside an object or a list; null for all other items.
const NestedContainer* nested(const Item& item);

/// Same items in the same order, all the way down.
bool equal(const Container& left, const Container& right);

}  // namespace simulator
