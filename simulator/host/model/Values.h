// The content of descriptors, lists and references: plain values without handles.
//
// Containers are shared and copied on write: putting one into another and reading it back takes
// constant time at any nesting depth.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "platform/host/HostTerms.h"

namespace simulator {

struct Container;
using ContainerPtr = std::shared_ptr<Container>;
using NestedContainer = std::shared_ptr<const Container>;

/// The UTF-16 units of a text that UTF-8 cannot encode because a surrogate has no partner; null for
/// every other text. Equal if the units are.
class ExactUnits {
 public:
  ExactUnits() = default;
  explicit ExactUnits(std::shared_ptr<const std::u16string> units) : units_(std::move(units)) {}

  const std::u16string* get() const { return units_.get(); }
  bool operator==(const ExactUnits& other) const;

 private:
  std::shared_ptr<const std::u16string> units_;
};

/// One form of a reference. `form` determines which members are in use.
struct Form {
  DescriptorFormID form = 0;
  DescriptorClassID desiredClass = 0;
  DescriptorEnumTypeID enumType = 0;  ///< of kFormEnumerated
  std::uint32_t value = 0;            ///< enumeration value, key, index, identifier or offset
  std::string name = {};              ///< of kFormName
  ExactUnits exactName = {};          ///< with U+FFFD in `name` in place of a lone surrogate

  bool operator==(const Form&) const = default;
};

/// Forms in the order in which they were put: each names an object inside the one that the forms
/// after it name.
using Reference = std::vector<Form>;
using Forms = std::span<const Form>;

/// What a handle of a reference stands for. Copies and rests share their forms until one of them is
/// appended to, so walking along a reference takes time in proportion to its length.
class SharedReference {
 public:
  SharedReference() : SharedReference(Reference()) {}
  explicit SharedReference(Reference forms)
      : forms_(std::make_shared<Reference>(std::move(forms))) {}

  Forms forms() const { return Forms(*forms_).subspan(first_); }

  void append(Form form);

  /// All forms but the first. REQUIRES: there is one.
  SharedReference rest() const;

 private:
  std::shared_ptr<Reference> forms_;
  std::size_t first_ = 0;
};

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

struct Text {
  std::string utf8;
  ExactUnits exact = {};  ///< with U+FFFD in `utf8` in place of a lone surrogate
  bool operator==(const Text&) const = default;
};

/// The file of an alias, a path item or a bookmark.
struct FilePath {
  std::string path;
  /// The bytes of an item that a real host made; the path may then be a name alone, or empty.
  std::optional<std::string> bytes = {};
  bool operator==(const FilePath&) const = default;
};

struct Data {
  std::string bytes;
  bool operator==(const Data&) const = default;
};

/// std::monostate: an item of a type whose value is not modelled.
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

/// A descriptor, with unique keys, or a list, with all keys 0.
struct Container {
  std::vector<Entry> entries;

  Container() = default;
  explicit Container(std::vector<Entry> initial) : entries(std::move(initial)) {}
  Container(const Container&) = default;
  Container(Container&&) = default;
  Container& operator=(const Container&) = delete;
  ~Container();

  /// The item under `key`; null if there is none. Takes constant time on average.
  const Item* find(DescriptorKeyID key) const;
  /// Replaces the item under `key` and keeps its position, or appends the item.
  void put(DescriptorKeyID key, Item item);
  /// Returns false if there is no such key.
  bool erase(DescriptorKeyID key);
  void clear();

 private:
  std::size_t placeOf(DescriptorKeyID key) const;

  // Maps the keys of the first `indexed_` entries to their indexes. Callers may append to `entries`
  // directly, but must remove only through the members above.
  mutable std::unordered_map<DescriptorKeyID, std::size_t> places_;
  mutable std::size_t indexed_ = 0;
  mutable std::size_t lastFound_ = 0;
};

/// Text from UTF-16; `exact` is set if needed.
Text textFrom(std::u16string_view units);

/// The UTF-16 units of a text.
std::u16string unitsOf(std::string_view utf8, const ExactUnits& exact);

/// The container of an object or list item; null for all other items.
const NestedContainer* nested(const Item& item);

/// Whether both have equal items in the same order, at every nesting level.
bool equal(const Container& left, const Container& right);

}  // namespace simulator
