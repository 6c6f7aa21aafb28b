#include "codegen/ItemWriter.h"

#include <HostTerms.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "codegen/ContainerKinds.h"
#include "codegen/DumpState.h"
#include "codegen/HostValues.h"
#include "codegen/PathConversion.h"
#include "codegen/ReferenceWalker.h"
#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"
#include "codegen/Terminology.h"
#include "codegen/TextConversion.h"
#include "codegen/VariableNames.h"
#include "hostutil/CFObject.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

namespace {

/// The room for a path, in bytes, terminator included; a longer path becomes empty.
constexpr std::size_t kPathSize = 512;

}  // namespace

template <class Kind>
bool ItemWriter<Kind>::begin() {
  if (container_ == nullptr || Kind::suite()->GetCount(container_, &count_) != 0) return false;
  if (!isCount(count_)) return false;
  variable_ = declaredName(Kind::kVariable, container_);
  writeContainerHeader<Kind>(container_, *out_);
  return true;
}

/// If the host does not report key or type, the type becomes 0, which is not a known type.
template <class Kind>
void ItemWriter<Kind>::readKeyAndType() {
  key_ = 0;
  type_ = 0;
  if (!Kind::readKey(container_, index_, &key_)) return;
  if (Kind::suite()->GetType(container_, selector(), &type_) != 0) type_ = 0;
}

template <class Kind>
NestedContainer ItemWriter<Kind>::writeNext() {
  readKeyAndType();
  NestedContainer nested;
  switch (type_) {
    case kTypeObject:
      nested = readNestedDescriptor(Kind::suite()->GetObject);
      break;
    case kTypeGlobalObject:
      nested = readNestedDescriptor(Kind::suite()->GetGlobalObject);
      break;
    case kTypeValueList:
      nested = readNestedList();
      break;
    case kTypeGlobalClass:
      writeGlobalClass();
      break;
    default:
      writePlainItem();
  }
  if (nested.index() == 0) ++index_;
  return nested;
}

template <class Kind>
NestedContainer ItemWriter<Kind>::readNestedDescriptor(OSErr (*get)(Container, std::uint32_t,
                                                                    DescriptorClassID*,
                                                                    PIActionDescriptor*)) {
  auto& descriptor = nested_.template emplace<ActionDescriptor>();
  if (get(container_, selector(), &nestedClass_, descriptor.out()) == 0) return descriptor.get();
  writeError(key());
  return {};
}

template <class Kind>
NestedContainer ItemWriter<Kind>::readNestedList() {
  auto& list = nested_.template emplace<ActionList>();
  if (Kind::suite()->GetList(container_, selector(), list.out()) == 0) return list.get();
  writeError(key());
  return {};
}

/// Looks the key up only now: the nested container's statements use the same variable for keys.
template <class Kind>
void ItemWriter<Kind>::finishNested() {
  if (const auto* list = std::get_if<ActionList>(&nested_)) {
    put("PutList", key(), nestedName(ListKind::kVariable, list->get()));
  } else {
    const SpelledID classID(*out_, nestedClass_, kObjectClassRole);
    put(type_ == kTypeObject ? "PutObject" : "PutGlobalObject", key(), classID.spelling(),
        nestedName(DescriptorKind::kVariable, std::get<ActionDescriptor>(nested_).get()));
  }
  nested_.template emplace<std::monostate>();
  ++index_;
}

/// Puts a global class back as a class, and looks its key up after the class; for a class, the key
/// is looked up first. Kept as dumps in the field have it.
template <class Kind>
void ItemWriter<Kind>::writeGlobalClass() {
  DescriptorClassID value = 0;
  if (Kind::suite()->GetGlobalClass(container_, selector(), &value) != 0) return writeError(key());
  const SpelledID classID(*out_, value, kClassRole);
  put("PutClass", key(), classID.spelling());
}

template <class Kind>
void ItemWriter<Kind>::writePlainItem() {
  const Key itemKey = key();
  if (!writeValue(itemKey)) writeError(itemKey);
}

/// False if a host call fails or reports a negative length, or the type is unknown.
template <class Kind>
bool ItemWriter<Kind>::writeValue(const Key& key) {
  switch (type_) {
    case kTypeInteger:
      return writeNumber("PutInteger", key, Kind::suite()->GetInteger);
    case kTypeInteger64:
      return writeNumber("PutInteger64", key, Kind::suite()->GetInteger64);
    case kTypeFloat:
      return writeNumber("PutFloat", key, Kind::suite()->GetFloat);
    case kTypeUnitFloat:
      return writeUnitFloat(key);
    case kTypeBoolean:
      return writeBoolean(key);
    case kTypeEnumerated:
      return writeEnumerated(key);
    case kTypeClass:
      return writeClass(key);
    case kTypeObjectReference:
      return writeReference(key);
    case kTypeAlias:
    case kTypePath:
      return writeAlias(key);
    case kTypeBookmark:
      return writeBookmark(key);
    case kTypeText:
      return writeText(key);
    case kTypeRawData:
      return writeRawData(key);
    default:
      return false;
  }
}

template <class Kind>
template <class Number>
bool ItemWriter<Kind>::writeNumber(std::string_view procedure, const Key& key,
                                   OSErr (*get)(Container, std::uint32_t, Number*)) {
  Number value = 0;
  if (get(container_, selector(), &value) != 0) return false;
  put(procedure, key, value);
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeUnitFloat(const Key& key) {
  DescriptorUnitID unit = 0;
  double value = 0;
  if (Kind::suite()->GetUnitFloat(container_, selector(), &unit, &value) != 0) return false;
  const SpelledID unitID(*out_, unit, kUnitRole);
  put("PutUnitFloat", key, unitID.spelling(), value);
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeBoolean(const Key& key) {
  Boolean value = 0;
  if (Kind::suite()->GetBoolean(container_, selector(), &value) != 0) return false;
  put("PutBoolean", key, value != 0 ? "true" : "false");
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeEnumerated(const Key& key) {
  DescriptorEnumTypeID type = 0;
  DescriptorEnumID value = 0;
  if (Kind::suite()->GetEnumerated(container_, selector(), &type, &value) != 0) return false;
  const SpelledID valueID(*out_, value, kEnumRole);
  const SpelledID typeID(*out_, type, kEnumTypeRole);
  put("PutEnumerated", key, typeID.spelling(), valueID.spelling());
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeClass(const Key& key) {
  DescriptorClassID value = 0;
  if (Kind::suite()->GetClass(container_, selector(), &value) != 0) return false;
  const SpelledID classID(*out_, value, kClassRole);
  put("PutClass", key, classID.spelling());
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeReference(const Key& key) {
  ActionReference value;
  if (Kind::suite()->GetReference(container_, selector(), value.out()) != 0) return false;
  ++tabLevel;
  writeWholeReference(value.get(), *out_);
  --tabLevel;
  put("PutReference", key, nestedName(ReferenceKind::kVariable, value.get()));
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeAlias(const Key& key) {
  OwnedAlias value;
  if (!hold(sPSHandle)) return false;
  if (Kind::suite()->GetAlias(container_, selector(), value.out()) != 0) return false;
  char path[kPathSize];
  AliasToFullPath(reinterpret_cast<AliasHandle>(value.get()), path, kPathSize);
  out_->indentedLine(kMoveToTop);
  out_->indentedLine("Handle aliasValue = NULL;");
  out_->indentedLine("FullPathToAlias(", StringLiteral{path}, ", aliasValue);");
  put("PutAlias", key, "aliasValue");
  if (freeZone != nullptr) freeZone->Add(value.get());
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeBookmark(const Key& key) {
  CFDataRef bookmark = nullptr;
  if (Kind::suite()->GetBookmark(container_, selector(), &bookmark) != 0) return false;
  const CFObject<CFDataRef> value(bookmark);
  char path[kPathSize];
  BookmarkToFullPath(bookmark, path, kPathSize);
  out_->indentedLine(kMoveToTop);
  out_->indentedLine("CFDataRef bookmarkValue = NULL;");
  out_->indentedLine("FullPathToBookmark(", StringLiteral{path}, ", bookmarkValue);");
  put("PutBookmark", key, "bookmarkValue");
  if (freeZone != nullptr) freeZone->Add(bookmark);
  return true;
}

template <class Kind>
bool ItemWriter<Kind>::writeText(const Key& key) {
  OwnedText value;
  if (!hold(sASZString)) return false;
  if (Kind::suite()->GetZString(container_, selector(), value.out()) != 0) return false;
  const std::optional<std::string> text = textToUTF8(value.get());
  if (!text) return false;
  out_->indentedLine("// Unicode String as UTF8: ", CommentText{*text});
  put("PutString", key, StringLiteral{*text});
  return true;
}

/// Writes the length only; the code that the text is pasted into provides the bytes.
template <class Kind>
bool ItemWriter<Kind>::writeRawData(const Key& key) {
  int32 length = 0;
  if (Kind::suite()->GetDataLength(container_, selector(), &length) != 0) return false;
  if (length < 0) return false;
  put("PutData", key, length, "voidPtrToData");
  return true;
}

template <class Kind>
void ItemWriter<Kind>::writeError(const Key& key) {
  char buffer[kNameSize];
  const IDName type = nameOfID(type_, "xxxx", buffer);
  if constexpr (std::is_same_v<Kind, DescriptorKind>) {
    out_->indentedLine("ERROR DumpInfoFromDescriptor type: ", type, ", key: ", key.spelling(),
                       ", entry: ", index_);
  } else {
    out_->indentedLine("ERROR: DumpInfoFromList type: ", type, ", entry: ", index_,
                       ", Total Entry: ", count_);
  }
}

template <class Kind>
template <class... Arguments>
void ItemWriter<Kind>::put(std::string_view procedure, const Key& key,
                           const Arguments&... arguments) {
  out_->indent();
  out_->write(Kind::kCall, procedure, "(", variable_);
  Kind::writeKey(key, *out_);
  (out_->write(", ", arguments), ...);
  out_->line(");");
  out_->errorCheck();
}

template class ItemWriter<DescriptorKind>;
template class ItemWriter<ListKind>;
