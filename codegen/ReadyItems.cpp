#include "codegen/ReadyItems.h"

#include <HostTerms.h>
#include <PIGeneral.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "codegen/ContainerKinds.h"
#include "codegen/HostValues.h"
#include "codegen/ItemWalker.h"
#include "codegen/Literals.h"
#include "codegen/PathConversion.h"
#include "codegen/ReadyFunction.h"
#include "codegen/ReferenceWalk.h"
#include "codegen/SpelledID.h"
#include "codegen/TextConversion.h"
#include "suites/Suites.h"

namespace {

/// Writes the statements that put the forms of a reference into the variable "ref".
class ReadyForms {
 public:
  explicit ReadyForms(ReadyFunction& out) : out_(out) {}

  void putClass(DescriptorClassID desiredClass) { put("PutClass", desiredClass); }

  template <class Number>
  void putNumber(std::string_view procedure, DescriptorClassID desiredClass, Number number) {
    put(procedure, desiredClass, ", ", integerLiteral(number));
  }

  void putEnumerated(DescriptorClassID desiredClass, DescriptorEnumTypeID type,
                     DescriptorEnumID value) {
    put("PutEnumerated", desiredClass, ", ", out_.spelling(type, kEnumTypeRole.kind), ", ",
        out_.spelling(value, kEnumRole.kind));
  }

  void putProperty(DescriptorClassID desiredClass, DescriptorKeyID key) {
    put("PutProperty", desiredClass, ", ", out_.spelling(key, kPropertyRole.kind));
  }

  void putName(PIActionReference part, DescriptorClassID desiredClass) {
    const std::optional<std::u16string> units = nameOf(part);
    if (!units) return writeError("GetNameZString", kSPBadParameterError);
    if (const auto name = unitsToCString(*units)) {
      return put("PutName", desiredClass, ", ", stringLiteral(*name));
    }
    out_.owners().text = true;
    out_.statement("textOfUnits(", unitsLiteral(*units), ", ",
                   static_cast<std::int64_t>(units->size()), ", text)");
    put("PutNameZString", desiredClass, ", text.get()");
  }

  /// A reference without forms has no first one.
  template <class Number>
  void writeError(std::string_view call, Number error) {
    const bool isEmpty =
        !hasForms_ && call == "GetForm" && std::int64_t{error} == errMissingParameter;
    if (!isEmpty) out_.lacks("a form of a reference (", call, " = ", error, ")");
  }

 private:
  static std::optional<std::u16string> nameOf(PIActionReference part) {
    OwnedText name;
    if (!hold(sASZString)) return std::nullopt;
    if (sPSActionReference->GetNameZString(part, name.out()) != 0) return std::nullopt;
    return textToUnits(name.get());
  }

  template <class... Parts>
  void put(std::string_view procedure, DescriptorClassID desiredClass, const Parts&... parts) {
    hasForms_ = true;
    out_.statement("sPSActionReference->", procedure, "(ref.get(), ",
                   out_.spelling(desiredClass, kClassRole.kind), parts..., ")");
  }

  ReadyFunction& out_;
  bool hasForms_ = false;
};

std::int64_t sizeOf(std::string_view bytes) { return static_cast<std::int64_t>(bytes.size()); }

}  // namespace

template <class Kind>
ReadyItems<Kind>::ReadyItems(Container container, Output& out)
    : container_(container), out_(&out), variable_(out.open<Kind>()) {
  out_->mayCut();
  out_->statement(Kind::kSuite, "->Make(", variable_, ".out())");
  variable_ += ".get()";
}

template <class Kind>
std::string ReadyItems<Kind>::key(DescriptorKeyID key) {
  out_->mayCut();
  if constexpr (std::is_same_v<Kind, ListKind>) {
    return {};
  } else {
    return out_->spelling(key, kKeyRole.kind, ", ");
  }
}

template <class Kind>
template <class... Parts>
void ReadyItems<Kind>::put(std::string_view procedure, const Key& key, const Parts&... parts) {
  out_->statement(Kind::kSuite, "->", procedure, "(", variable_, key, ", ", parts..., ")");
}

template <class Kind>
void ReadyItems<Kind>::putNumber(const Key& key, std::int32_t value) {
  put("PutInteger", key, integerLiteral(value));
}

template <class Kind>
void ReadyItems<Kind>::putNumber(const Key& key, std::int64_t value) {
  put("PutInteger64", key, integerLiteral(value));
}

template <class Kind>
void ReadyItems<Kind>::putNumber(const Key& key, double value) {
  put("PutFloat", key, realLiteral(value));
}

template <class Kind>
void ReadyItems<Kind>::putUnitFloat(const Key& key, DescriptorUnitID unit, double value) {
  put("PutUnitFloat", key, idOf(unit, kUnitRole.kind), ", ", realLiteral(value));
}

template <class Kind>
void ReadyItems<Kind>::putBoolean(const Key& key, bool value) {
  put("PutBoolean", key, value ? "true" : "false");
}

template <class Kind>
void ReadyItems<Kind>::putEnumerated(const Key& key, DescriptorEnumTypeID type,
                                     DescriptorEnumID value) {
  put("PutEnumerated", key, idOf(type, kEnumTypeRole.kind), ", ", idOf(value, kEnumRole.kind));
}

template <class Kind>
void ReadyItems<Kind>::putClass(const Key& key, DescriptorClassID value) {
  put("PutClass", key, idOf(value, kClassRole.kind));
}

template <class Kind>
void ReadyItems<Kind>::putReference(const Key& key, PIActionReference value) {
  out_->owners().reference = true;
  out_->statement("sPSActionReference->Make(ref.out())");
  ReadyForms forms(*out_);
  walkReference(value, forms);
  put("PutReference", key, "ref.get()");
}

/// By its path, if it has one, and else by its bytes.
template <class Kind>
bool ReadyItems<Kind>::putAlias(const Key& key, Handle value) {
  const auto alias = reinterpret_cast<AliasHandle>(value);
  out_->owners().alias = true;
  if (const auto path = pathInAlias(alias)) {
    out_->statement("aliasOfPath(", stringLiteral(*path), ", alias)");
  } else {
    const std::string_view bytes(*value, static_cast<std::size_t>(GetAliasSize(alias)));
    out_->statement("aliasOfBytes(", bytesLiteral(bytes), ", ", sizeOf(bytes), ", alias)");
  }
  put("PutAlias", key, "alias.get()");
  return true;
}

/// By its path, if it has one, and else by its bytes.
template <class Kind>
bool ReadyItems<Kind>::putBookmark(const Key& key, CFDataRef value) {
  if (value == nullptr) return false;
  out_->owners().bookmark = true;
  if (const auto path = pathInBookmark(value)) {
    out_->statement("bookmarkOfPath(", stringLiteral(*path), ", bookmark)");
  } else {
    const std::string_view bytes(reinterpret_cast<const char*>(CFDataGetBytePtr(value)),
                                 static_cast<std::size_t>(CFDataGetLength(value)));
    out_->statement("bookmarkOfBytes(", bytesLiteral(bytes), ", ", sizeOf(bytes), ", bookmark)");
  }
  put("PutBookmark", key, "bookmark.get()");
  return true;
}

template <class Kind>
bool ReadyItems<Kind>::putText(const Key& key, ASZString value) {
  const std::optional<std::u16string> units = textToUnits(value);
  if (!units) return false;
  if (const auto text = unitsToCString(*units)) {
    put("PutString", key, stringLiteral(*text));
    return true;
  }
  out_->owners().text = true;
  out_->statement("textOfUnits(", unitsLiteral(*units), ", ",
                  static_cast<std::int64_t>(units->size()), ", text)");
  put("PutZString", key, "text.get()");
  return true;
}

template <class Kind>
bool ReadyItems<Kind>::putRawData(const Key& key, std::uint32_t selector, std::int32_t length) {
  // One byte longer, so that there is an address also for no bytes.
  std::string bytes(static_cast<std::size_t>(length) + 1, '\0');
  if (Kind::suite()->GetData(container_, selector, bytes.data()) != 0) return false;
  bytes.pop_back();
  put("PutData", key, length, ", ", bytesLiteral(bytes));
  return true;
}

template <class Kind>
void ReadyItems<Kind>::putGlobalClass(const ItemPlace& place, DescriptorClassID value) {
  put("PutGlobalClass", key(place.key), idOf(value, kClassRole.kind));
}

template <class Kind>
void ReadyItems<Kind>::putObject(const ItemPlace& place, DescriptorClassID type, PIActionDescriptor,
                                 bool isWritten) {
  if (!isWritten) return writeError(place, key(place.key));
  const std::string object = out_->close<DescriptorKind>();
  put(place.type == kTypeObject ? "PutObject" : "PutGlobalObject", key(place.key),
      idOf(type, kObjectClassRole.kind), ", ", object, ".get()");
}

template <class Kind>
void ReadyItems<Kind>::putList(const ItemPlace& place, PIActionList, bool isWritten) {
  if (!isWritten) return writeError(place, key(place.key));
  put("PutList", key(place.key), out_->close<ListKind>(), ".get()");
}

template <class Kind>
void ReadyItems<Kind>::writeError(const ItemPlace& place, const Key& key) {
  out_->lacks("item ", place.index, key, ", of the type ", codeComment(place.type));
}

template class ReadyItems<DescriptorKind>;
template class ReadyItems<ListKind>;
