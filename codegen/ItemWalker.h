// Reads the items of one descriptor or list from the host, one after another, and hands them to
// what writes them.
//
//   ItemWalker<PlainItems<ListKind>> items(list, out);
//   if (!items.begin()) return;
//   while (!items.atEnd()) {
//     const NestedContainer nested = items.next();
//     if (nested.index() != 0) { /* walk the nested container */ items.finishNested(true); }
//   }
//
// The order of the host calls is the same for every form of the text.
#pragma once

#include <HostTerms.h>

#include <cstdint>
#include <memory>
#include <variant>

#include "codegen/ContainerKinds.h"
#include "codegen/HostValues.h"
#include "hostutil/CFObject.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

/// The container in an item, which must be written before the item's own statement. It may be null.
/// The first alternative means that the item holds no container.
using NestedContainer = std::variant<std::monostate, PIActionDescriptor, PIActionList>;

/// Which item of its container is read. `key` is 0 in a list; `type` is 0 if the host does not
/// report it.
struct ItemPlace {
  DescriptorKeyID key = 0;
  DescriptorTypeID type = 0;
  std::uint32_t index = 0;
  std::uint32_t count = 0;
};

/// `Items` writes the items of one container in one form of the text. It has
/// - the types `Kind` (DescriptorKind or ListKind), `Output`, and `Key`, a key as the text spells
/// it;
/// - a constructor that takes the container and the output, and begins the container;
/// - `key(DescriptorKeyID)`, called before a value is read, except a container or a global class;
/// - one member for each type of value, called with that key and the value. Those that can fail
///   return false;
/// - `putGlobalClass`, `putObject` and `putList`, which spell the key themselves;
/// - `writeError`, called if an item cannot be read, is of an unknown type, or its member failed.
/// REQUIRES: the action suites are held; `container` and `out` outlive the walker. [main-thread]
template <class Items>
class ItemWalker {
 public:
  using Kind = typename Items::Kind;
  using Container = typename Kind::Container;

  ItemWalker(Container container, typename Items::Output& out)
      : container_(container), out_(&out) {}

  /// Begins the container. False, with nothing written, if the container is null or the host does
  /// not report its item count, or one that is not a count (HostValues.h).
  bool begin() {
    if (container_ == nullptr || Kind::suite()->GetCount(container_, &place_.count) != 0)
      return false;
    if (!isCount(place_.count)) return false;
    items_ = std::make_unique<Items>(container_, *out_);
    return true;
  }

  bool atEnd() const { return place_.index == place_.count; }

  /// Writes the next item, or returns the container nested in it; the caller then walks that
  /// container and calls finishNested. The container remains owned by this object. REQUIRES: not at
  /// the end.
  NestedContainer next() {
    readKeyAndType();
    NestedContainer nested;
    switch (place_.type) {
      case kTypeObject:
        nested = readDescriptor(Kind::suite()->GetObject);
        break;
      case kTypeGlobalObject:
        nested = readDescriptor(Kind::suite()->GetGlobalObject);
        break;
      case kTypeValueList:
        nested = readList();
        break;
      case kTypeGlobalClass:
        writeGlobalClass();
        break;
      default:
        writePlainItem();
    }
    if (nested.index() == 0) ++place_.index;
    return nested;
  }

  /// Writes the statement that puts in the container that `next` returned, and frees it.
  /// `isWritten`: whether that container could be walked.
  void finishNested(bool isWritten) {
    if (const auto* list = std::get_if<ActionList>(&nested_)) {
      items_->putList(place_, list->get(), isWritten);
    } else {
      items_->putObject(place_, nestedClass_, std::get<ActionDescriptor>(nested_).get(), isWritten);
    }
    nested_.template emplace<std::monostate>();
    ++place_.index;
  }

 private:
  using Key = typename Items::Key;

  std::uint32_t selector() const { return Kind::selector(place_.key, place_.index); }

  /// If the host does not report key or type, the type becomes 0, which is not a known type.
  void readKeyAndType() {
    place_.key = 0;
    place_.type = 0;
    if (!Kind::readKey(container_, place_.index, &place_.key)) return;
    if (Kind::suite()->GetType(container_, selector(), &place_.type) != 0) place_.type = 0;
  }

  NestedContainer readDescriptor(OSErr (*get)(Container, std::uint32_t, DescriptorClassID*,
                                              PIActionDescriptor*)) {
    auto& descriptor = nested_.template emplace<ActionDescriptor>();
    if (get(container_, selector(), &nestedClass_, descriptor.out()) == 0) return descriptor.get();
    items_->writeError(place_, items_->key(place_.key));
    return {};
  }

  NestedContainer readList() {
    auto& list = nested_.template emplace<ActionList>();
    if (Kind::suite()->GetList(container_, selector(), list.out()) == 0) return list.get();
    items_->writeError(place_, items_->key(place_.key));
    return {};
  }

  void writeGlobalClass() {
    DescriptorClassID value = 0;
    if (Kind::suite()->GetGlobalClass(container_, selector(), &value) == 0) {
      items_->putGlobalClass(place_, value);
    } else {
      items_->writeError(place_, items_->key(place_.key));
    }
  }

  void writePlainItem() {
    const Key key = items_->key(place_.key);
    if (!writeValue(key)) items_->writeError(place_, key);
  }

  /// False if a host call fails or reports a negative length, or the type is unknown.
  bool writeValue(const Key& key) {
    switch (place_.type) {
      case kTypeInteger:
        return writeNumber(key, Kind::suite()->GetInteger);
      case kTypeInteger64:
        return writeNumber(key, Kind::suite()->GetInteger64);
      case kTypeFloat:
        return writeNumber(key, Kind::suite()->GetFloat);
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

  template <class Number>
  bool writeNumber(const Key& key, OSErr (*get)(Container, std::uint32_t, Number*)) {
    Number value = 0;
    if (get(container_, selector(), &value) != 0) return false;
    items_->putNumber(key, value);
    return true;
  }

  bool writeUnitFloat(const Key& key) {
    DescriptorUnitID unit = 0;
    double value = 0;
    if (Kind::suite()->GetUnitFloat(container_, selector(), &unit, &value) != 0) return false;
    items_->putUnitFloat(key, unit, value);
    return true;
  }

  bool writeBoolean(const Key& key) {
    Boolean value = 0;
    if (Kind::suite()->GetBoolean(container_, selector(), &value) != 0) return false;
    items_->putBoolean(key, value != 0);
    return true;
  }

  bool writeEnumerated(const Key& key) {
    DescriptorEnumTypeID type = 0;
    DescriptorEnumID value = 0;
    if (Kind::suite()->GetEnumerated(container_, selector(), &type, &value) != 0) return false;
    items_->putEnumerated(key, type, value);
    return true;
  }

  bool writeClass(const Key& key) {
    DescriptorClassID value = 0;
    if (Kind::suite()->GetClass(container_, selector(), &value) != 0) return false;
    items_->putClass(key, value);
    return true;
  }

  bool writeReference(const Key& key) {
    ActionReference value;
    if (Kind::suite()->GetReference(container_, selector(), value.out()) != 0) return false;
    items_->putReference(key, value.get());
    return true;
  }

  bool writeAlias(const Key& key) {
    OwnedAlias value;
    if (!hold(sPSHandle)) return false;
    if (Kind::suite()->GetAlias(container_, selector(), value.out()) != 0) return false;
    return items_->putAlias(key, value.get());
  }

  bool writeBookmark(const Key& key) {
    CFDataRef bookmark = nullptr;
    if (Kind::suite()->GetBookmark(container_, selector(), &bookmark) != 0) return false;
    const CFObject<CFDataRef> value(bookmark);
    return items_->putBookmark(key, bookmark);
  }

  bool writeText(const Key& key) {
    OwnedText value;
    if (!hold(sASZString)) return false;
    if (Kind::suite()->GetZString(container_, selector(), value.out()) != 0) return false;
    return items_->putText(key, value.get());
  }

  bool writeRawData(const Key& key) {
    int32 length = 0;
    if (Kind::suite()->GetDataLength(container_, selector(), &length) != 0) return false;
    if (length < 0) return false;
    return items_->putRawData(key, selector(), length);
  }

  Container container_;
  typename Items::Output* out_;
  std::unique_ptr<Items> items_;  ///< null before `begin`
  ItemPlace place_;
  DescriptorClassID nestedClass_ = 0;
  std::variant<std::monostate, ActionDescriptor, ActionList> nested_;
};
