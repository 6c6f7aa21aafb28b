// Writes the items of one descriptor or list in the ready form; ReadyFile.h describes it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "codegen/ContainerKinds.h"
#include "codegen/ItemWalker.h"
#include "codegen/ReadyFunction.h"

/// `K` is DescriptorKind or ListKind. The members are those that ItemWalker asks for.
template <class K>
class ReadyItems {
 public:
  using Kind = K;
  using Output = ReadyFunction;
  using Container = typename Kind::Container;
  /// The key as an argument, with a comma before it; empty in a list.
  using Key = std::string;

  /// Writes the statement that makes the container.
  ReadyItems(Container container, Output& out);

  Key key(DescriptorKeyID key);

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
  bool putRawData(const Key& key, std::uint32_t selector, std::int32_t length);
  void putGlobalClass(const ItemPlace& place, DescriptorClassID value);
  void putObject(const ItemPlace& place, DescriptorClassID type, PIActionDescriptor object,
                 bool isWritten);
  void putList(const ItemPlace& place, PIActionList list, bool isWritten);
  void writeError(const ItemPlace& place, const Key& key);

 private:
  template <class... Parts>
  void put(std::string_view procedure, const Key& key, const Parts&... parts);

  std::string idOf(std::uint32_t identifier, const char* kind) {
    return out_->spelling(identifier, kind);
  }

  Container container_;
  ReadyFunction* out_;
  std::string variable_;
};
