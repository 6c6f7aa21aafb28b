// Writes the items of one descriptor or list in the plain form; Walkers.h describes it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "codegen/DumpState.h"
#include "codegen/ItemWalker.h"
#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"

/// Where the plain form is written; nested containers are indented.
class PlainOutput {
 public:
  explicit PlainOutput(SourceWriter& out) : writer(out) {}

  void enter() { ++tabLevel; }
  void leave() { --tabLevel; }

  SourceWriter& writer;
};

/// The items of a list have no key: nothing is looked up or written.
struct NoKey {
  NoKey(SourceWriter&, DescriptorKeyID, const IDRole&) {}
};

/// `K` is DescriptorKind or ListKind. The members are those that ItemWalker asks for.
template <class K>
class PlainItems {
 public:
  using Kind = K;
  using Output = PlainOutput;
  using Container = typename Kind::Container;
  using Key = std::conditional_t<std::is_same_v<Kind, DescriptorKind>, SpelledID, NoKey>;

  /// Writes the container's header.
  PlainItems(Container container, Output& out);

  Key key(DescriptorKeyID key) { return Key(*out_, key, kKeyRole); }

  void putNumber(const Key& key, std::int32_t value);
  void putNumber(const Key& key, std::int64_t value);
  void putNumber(const Key& key, double value);
  void putUnitFloat(const Key& key, DescriptorUnitID unit, double value);
  void putBoolean(const Key& key, bool value);
  void putEnumerated(const Key& key, DescriptorEnumTypeID type, DescriptorEnumID value);
  void putClass(const Key& key, DescriptorClassID value);
  void putReference(const Key& key, PIActionReference value);
  bool putAlias(const Key& key, Handle value);
  bool putBookmark(const Key& key, CFDataRef value);
  bool putText(const Key& key, ASZString value);

  /// Writes the length only; the code that the text is pasted into provides the bytes.
  bool putRawData(const Key& key, std::uint32_t selector, std::int32_t length);

  /// Puts a global class back as a class, and looks its key up after the class; for a class, the
  /// key is looked up first. Kept as dumps in the field have it.
  void putGlobalClass(const ItemPlace& place, DescriptorClassID value);

  /// Look the key up only now: the nested container's statements use the same variable for keys.
  void putObject(const ItemPlace& place, DescriptorClassID type, PIActionDescriptor object, bool);
  void putList(const ItemPlace& place, PIActionList list, bool);

  void writeError(const ItemPlace& place, const Key& key);

 private:
  /// Writes "error = suite->procedure(container, key, arguments...);" and the error check.
  template <class... Arguments>
  void put(std::string_view procedure, const Key& key, const Arguments&... arguments);

  SourceWriter* out_;
  std::string variable_;
};
