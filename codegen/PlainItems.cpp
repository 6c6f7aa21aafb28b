#include "codegen/PlainItems.h"

#include <HostTerms.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

#include "codegen/ContainerKinds.h"
#include "codegen/DumpState.h"
#include "codegen/ItemWalker.h"
#include "codegen/PathConversion.h"
#include "codegen/PlainHeader.h"
#include "codegen/PlainReference.h"
#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"
#include "codegen/Terminology.h"
#include "codegen/TextConversion.h"
#include "codegen/VariableNames.h"

namespace {

/// The room for a path, in bytes, terminator included; a longer path becomes empty.
constexpr std::size_t kPathSize = 512;

}  // namespace

template <class Kind>
PlainItems<Kind>::PlainItems(Container container, Output& out)
    : out_(&out.writer), variable_(declaredName(Kind::kVariable, container)) {
  writeContainerHeader<Kind>(container, *out_);
}

template <class Kind>
void PlainItems<Kind>::putNumber(const Key& key, std::int32_t value) {
  put("PutInteger", key, value);
}

template <class Kind>
void PlainItems<Kind>::putNumber(const Key& key, std::int64_t value) {
  put("PutInteger64", key, value);
}

template <class Kind>
void PlainItems<Kind>::putNumber(const Key& key, double value) {
  put("PutFloat", key, value);
}

template <class Kind>
void PlainItems<Kind>::putUnitFloat(const Key& key, DescriptorUnitID unit, double value) {
  const SpelledID unitID(*out_, unit, kUnitRole);
  put("PutUnitFloat", key, unitID.spelling(), value);
}

template <class Kind>
void PlainItems<Kind>::putBoolean(const Key& key, bool value) {
  put("PutBoolean", key, value ? "true" : "false");
}

template <class Kind>
void PlainItems<Kind>::putEnumerated(const Key& key, DescriptorEnumTypeID type,
                                     DescriptorEnumID value) {
  const SpelledID valueID(*out_, value, kEnumRole);
  const SpelledID typeID(*out_, type, kEnumTypeRole);
  put("PutEnumerated", key, typeID.spelling(), valueID.spelling());
}

template <class Kind>
void PlainItems<Kind>::putClass(const Key& key, DescriptorClassID value) {
  const SpelledID classID(*out_, value, kClassRole);
  put("PutClass", key, classID.spelling());
}

template <class Kind>
void PlainItems<Kind>::putReference(const Key& key, PIActionReference value) {
  ++tabLevel;
  writeWholeReference(value, *out_);
  --tabLevel;
  put("PutReference", key, nestedName(ReferenceKind::kVariable, value));
}

template <class Kind>
bool PlainItems<Kind>::putAlias(const Key& key, Handle value) {
  char path[kPathSize];
  AliasToFullPath(reinterpret_cast<AliasHandle>(value), path, kPathSize);
  out_->indentedLine(kMoveToTop);
  out_->indentedLine("Handle aliasValue = NULL;");
  out_->indentedLine("FullPathToAlias(", StringLiteral{path}, ", aliasValue);");
  put("PutAlias", key, "aliasValue");
  if (freeZone != nullptr) freeZone->Add(value);
  return true;
}

template <class Kind>
bool PlainItems<Kind>::putBookmark(const Key& key, CFDataRef value) {
  char path[kPathSize];
  BookmarkToFullPath(value, path, kPathSize);
  out_->indentedLine(kMoveToTop);
  out_->indentedLine("CFDataRef bookmarkValue = NULL;");
  out_->indentedLine("FullPathToBookmark(", StringLiteral{path}, ", bookmarkValue);");
  put("PutBookmark", key, "bookmarkValue");
  if (freeZone != nullptr) freeZone->Add(value);
  return true;
}

template <class Kind>
bool PlainItems<Kind>::putText(const Key& key, ASZString value) {
  const std::optional<std::string> text = textToUTF8(value);
  if (!text) return false;
  out_->indentedLine("// Unicode String as UTF8: ", CommentText{*text});
  put("PutString", key, StringLiteral{*text});
  return true;
}

template <class Kind>
bool PlainItems<Kind>::putRawData(const Key& key, std::uint32_t, std::int32_t length) {
  put("PutData", key, length, "voidPtrToData");
  return true;
}

template <class Kind>
void PlainItems<Kind>::putGlobalClass(const ItemPlace& place, DescriptorClassID value) {
  const SpelledID classID(*out_, value, kClassRole);
  put("PutClass", key(place.key), classID.spelling());
}

template <class Kind>
void PlainItems<Kind>::putObject(const ItemPlace& place, DescriptorClassID type,
                                 PIActionDescriptor object, bool) {
  const SpelledID classID(*out_, type, kObjectClassRole);
  put(place.type == kTypeObject ? "PutObject" : "PutGlobalObject", key(place.key),
      classID.spelling(), nestedName(DescriptorKind::kVariable, object));
}

template <class Kind>
void PlainItems<Kind>::putList(const ItemPlace& place, PIActionList list, bool) {
  put("PutList", key(place.key), nestedName(ListKind::kVariable, list));
}

template <class Kind>
void PlainItems<Kind>::writeError(const ItemPlace& place, const Key& key) {
  char buffer[kNameSize];
  const IDName type = nameOfID(place.type, "xxxx", buffer);
  if constexpr (std::is_same_v<Kind, DescriptorKind>) {
    out_->indentedLine("ERROR DumpInfoFromDescriptor type: ", type, ", key: ", key.spelling(),
                       ", entry: ", place.index);
  } else {
    out_->indentedLine("ERROR: DumpInfoFromList type: ", type, ", entry: ", place.index,
                       ", Total Entry: ", place.count);
  }
}

template <class Kind>
template <class... Arguments>
void PlainItems<Kind>::put(std::string_view procedure, const Key& key,
                           const Arguments&... arguments) {
  out_->indent();
  out_->write("error = ", Kind::kSuite, "->", procedure, "(", variable_);
  if constexpr (std::is_same_v<Kind, DescriptorKind>) out_->write(", ", key.spelling());
  (out_->write(", ", arguments), ...);
  out_->line(");");
  out_->errorCheck();
}

template class PlainItems<DescriptorKind>;
template class PlainItems<ListKind>;
