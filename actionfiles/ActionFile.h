// The content of an action file (.atn): a set of recorded actions, as the host saves it.
//
// Layout of version 16. All numbers are big-endian unless stated otherwise.
//
//     file        u32 version, text name of the set, u8 expanded, u32 count, actions
//     action      u16 function key, u8 shift, u8 command, u16 colour, text name, u8 expanded,
//                 u32 count, steps
//     step        u8 expanded, u8 enabled, u8 with dialog, u8 dialog options, event,
//                 u32 length and the command's name in Mac Roman,
//                 i32 0, or any other number and a descriptor
//     event       'TEXT', u32 length and a string ID; or 'long' and a code
//     text        u32 count of UTF-16 units, the units; the last is 0 as a rule and is counted
//     id          u32 length and a string ID; or the length 0 and a code of four bytes
//     class       text name, id
//     descriptor  class, u32 count, items: each an id (its key), a type and a value
//     list        u32 count, items: each a type and a value
//     reference   u32 count, forms: each a code, a class and a value
//
// The values of items by type, and those of forms:
//
//     'long' i32              'comp' i64              'doub' f64           'bool' u8
//     'UntF' code, f64        'enum' id type, id      'TEXT' text
//     'type' 'GlbC' class     'Objc' 'GlbO' descriptor                     'VlLs' list
//     'obj ' reference        'tdta' 'alis' 'Pth ' 'bkmk' u32 length and bytes
//     'UnFl' code, u32 count, f64 each
//     'ObAr' u32 count of objects, class, u32 count of columns: each an id, the code 'UnFl' and
//            what follows that type
//     'prop' id               'Clss' nothing          'Enmr' id type, id
//     'rele' i32              'Idnt' 'indx' u32       'name' text
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/FourCharCode.h"

namespace actionfiles {

/// A value on the heap, of a type that may still be incomplete. It is null only after it was moved
/// from.
template <class T>
class Boxed {
 public:
  Boxed() : value_(std::make_unique<T>()) {}

  T& operator*() const { return *value_; }
  T* operator->() const { return value_.get(); }

 private:
  std::unique_ptr<T> value_;
};

/// An ID of the host's terminology: a string ID or a four-character code. Most items of a file have
/// one or more, so it is small.
class Id {
 public:
  Id() = default;
  explicit Id(std::uint32_t code) : number_(code) {}
  /// REQUIRES: `string` is not empty and is shorter than 4 GB.
  explicit Id(std::string_view string)
      : characters_(new char[string.size()]), number_(static_cast<std::uint32_t>(string.size())) {
    string.copy(characters_.get(), string.size());
  }

  bool isString() const { return characters_ != nullptr; }

  /// The string ID; empty for a code.
  std::string_view string() const { return {characters_.get(), isString() ? number_ : 0}; }

  /// The code; 0 for a string ID.
  std::uint32_t code() const { return isString() ? 0 : number_; }

 private:
  std::unique_ptr<char[]> characters_;  ///< null for a code
  std::uint32_t number_ = 0;            ///< the code, or the number of characters
};

/// Unicode text. UTF-8 cannot encode a surrogate without its partner; text that has one also keeps
/// its UTF-16 units, and has U+FFFD in their place in `utf8`. A terminator is part of neither.
struct Text {
  std::string utf8;
  std::shared_ptr<const std::u16string> units;  ///< null if `utf8` says everything
  bool terminated = false;                      ///< the file counts a terminating 0
};

struct ClassName {
  Text name;  ///< for people; empty as a rule
  Id id;
};

// Types of items.
inline constexpr std::uint32_t kInteger = fourCharCode("long");
inline constexpr std::uint32_t kLargeInteger = fourCharCode("comp");
inline constexpr std::uint32_t kFloat = fourCharCode("doub");
inline constexpr std::uint32_t kUnitFloat = fourCharCode("UntF");
inline constexpr std::uint32_t kBoolean = fourCharCode("bool");
inline constexpr std::uint32_t kEnumerated = fourCharCode("enum");
inline constexpr std::uint32_t kClass = fourCharCode("type");
inline constexpr std::uint32_t kGlobalClass = fourCharCode("GlbC");
inline constexpr std::uint32_t kObject = fourCharCode("Objc");
inline constexpr std::uint32_t kGlobalObject = fourCharCode("GlbO");
inline constexpr std::uint32_t kList = fourCharCode("VlLs");
inline constexpr std::uint32_t kReference = fourCharCode("obj ");
inline constexpr std::uint32_t kText = fourCharCode("TEXT");
inline constexpr std::uint32_t kRawData = fourCharCode("tdta");
inline constexpr std::uint32_t kAlias = fourCharCode("alis");
inline constexpr std::uint32_t kPath = fourCharCode("Pth ");
inline constexpr std::uint32_t kBookmark = fourCharCode("bkmk");
inline constexpr std::uint32_t kUnitFloats = fourCharCode("UnFl");
inline constexpr std::uint32_t kObjectArray = fourCharCode("ObAr");

// Forms of a reference.
inline constexpr std::uint32_t kPropertyForm = fourCharCode("prop");
inline constexpr std::uint32_t kClassForm = fourCharCode("Clss");
inline constexpr std::uint32_t kEnumeratedForm = fourCharCode("Enmr");
inline constexpr std::uint32_t kOffsetForm = fourCharCode("rele");
inline constexpr std::uint32_t kIdentifierForm = fourCharCode("Idnt");
inline constexpr std::uint32_t kIndexForm = fourCharCode("indx");
inline constexpr std::uint32_t kNameForm = fourCharCode("name");

struct UnitFloat {
  std::uint32_t unit = 0;  ///< a code such as '#Pxl'
  double value = 0;
};

struct Enumerated {
  Id type;
  Id value;
};

/// One form of a reference; `value` by `form`: nothing for a class, an Id for a property, a number
/// for an identifier, an index or an offset (the only signed one), a Text for a name.
struct Form {
  std::uint32_t form = kClassForm;
  ClassName desiredClass;
  std::variant<std::monostate, Id, Enumerated, std::int32_t, std::uint32_t, Boxed<Text>> value;
};

/// Forms in the file's order: each names an object inside the one that the forms after it name.
using Reference = std::vector<Form>;

/// The bytes of raw data, of an alias, of a path or of a bookmark; FilePath.h reads the latter.
struct Data {
  std::string bytes;
};

struct UnitFloats {
  std::uint32_t unit = 0;
  std::vector<double> values;
};

/// An array of objects of one class, stored by columns: one for each key.
struct ObjectArray {
  struct Column {
    Id key;
    UnitFloats values;
  };

  std::uint32_t count = 0;  ///< of the objects, as the file says; columns may be of other lengths
  ClassName type;
  std::vector<Column> columns;
};

struct Descriptor;
struct Value;

struct List {
  std::vector<Value> values;
};

/// The value of an item; `type` decides which alternative `content` holds: a ClassName for both
/// kinds of class, a Descriptor for both kinds of object, Data for the four types made of bytes.
/// What is large lies in a box, because a long list has a Value for each of its items.
struct Value {
  std::uint32_t type = kInteger;
  std::variant<std::int32_t, std::int64_t, double, bool, UnitFloat, Enumerated, Boxed<ClassName>,
               Boxed<Descriptor>, List, Reference, Boxed<Text>, Data, UnitFloats,
               Boxed<ObjectArray>>
      content;
};

struct Item {
  Id key;
  Value value;
};

struct Descriptor {
  ClassName type;
  std::vector<Item> items;  ///< in the file's order; a broken file may repeat a key
};

struct Step {
  bool expanded = false;
  bool enabled = false;     ///< a step that is not enabled is not played
  bool withDialog = false;  ///< the command's dialog is shown when the step is played
  std::uint8_t dialogOptions = 0;
  Id event;
  std::string name;       ///< of the command, in UTF-8; may be empty
  std::int32_t mark = 0;  ///< 0: there is no descriptor, and `descriptor` is empty
  Descriptor descriptor;
};

/// What the file says of an action besides its steps.
struct ActionHead {
  std::uint16_t functionKey = 0;
  bool shift = false;
  bool command = false;
  std::uint16_t colour = 0;
  Text name;
  bool expanded = false;
  std::uint32_t steps = 0;  ///< the number of steps
};

/// What the file says of the set besides its actions.
struct SetHead {
  Text name;
  bool expanded = false;
  std::uint32_t actions = 0;  ///< the number of actions
};

}  // namespace actionfiles
