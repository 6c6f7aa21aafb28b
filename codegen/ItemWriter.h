// Writes the items of one descriptor or list, one after another.
//
//   ItemWriter<ListKind> items(list, out);
//   if (!items.begin()) return;
//   while (!items.atEnd()) {
//     const NestedContainer nested = items.writeNext();
//     if (nested.index() != 0) { /* write the nested container */ items.finishNested(); }
//   }
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "codegen/ContainerKinds.h"
#include "codegen/SourceWriter.h"

/// The container in an item, which must be written before the item's own statement. It may be null.
/// The first alternative means that the item holds no container.
using NestedContainer = std::variant<std::monostate, PIActionDescriptor, PIActionList>;

/// `Kind` is DescriptorKind or ListKind.
/// REQUIRES: the action suites are held; `container` and `out` outlive the writer. [main-thread]
template <class Kind>
class ItemWriter {
 public:
  using Container = typename Kind::Container;

  ItemWriter(Container container, SourceWriter& out) : container_(container), out_(&out) {}

  /// Writes the container's header. False, with nothing written, if the container is null or the
  /// host does not report its item count, or one that is not a count (HostValues.h).
  bool begin();

  bool atEnd() const { return index_ == count_; }

  /// Writes the next item, or returns the container nested in it; the caller then writes that
  /// container and calls finishNested. The container remains owned by this object. REQUIRES: not at
  /// the end.
  NestedContainer writeNext();

  /// Writes the statement that puts in the container that writeNext returned, and frees it.
  void finishNested();

 private:
  using Key = typename Kind::Key;

  void readKeyAndType();
  Key key() { return Key(*out_, key_, kKeyRole); }
  std::uint32_t selector() const { return Kind::selector(key_, index_); }

  NestedContainer readNestedDescriptor(OSErr (*get)(Container, std::uint32_t, DescriptorClassID*,
                                                    PIActionDescriptor*));
  NestedContainer readNestedList();
  void writeGlobalClass();
  void writePlainItem();
  bool writeValue(const Key& key);
  bool writeUnitFloat(const Key& key);
  bool writeBoolean(const Key& key);
  bool writeEnumerated(const Key& key);
  bool writeClass(const Key& key);
  bool writeReference(const Key& key);
  bool writeAlias(const Key& key);
  bool writeBookmark(const Key& key);
  bool writeText(const Key& key);
  bool writeRawData(const Key& key);
  void writeError(const Key& key);

  template <class Number>
  bool writeNumber(std::string_view procedure, const Key& key,
                   OSErr (*get)(Container, std::uint32_t, Number*));

  /// Writes "error = suite->procedure(container, key, arguments...);" and the error check.
  template <class... Arguments>
  void put(std::string_view procedure, const Key& key, const Arguments&... arguments);

  Container container_;
  SourceWriter* out_;
  std::string variable_;
  std::uint32_t index_ = 0;
  std::uint32_t count_ = 0;

  // The current item.
  DescriptorKeyID key_ = 0;
  DescriptorTypeID type_ = 0;
  DescriptorClassID nestedClass_ = 0;
  std::variant<std::monostate, ActionDescriptor, ActionList> nested_;
};
