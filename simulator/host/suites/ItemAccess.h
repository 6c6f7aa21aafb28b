// The procedures that the descriptor and list suites have in common: they put and read items, by
// key in a descriptor and by index in a list.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

// A slot is the place of one item. `withSlot` makes a slot from the first arguments of a procedure
// and calls `body` with the procedure's name, the slot and the other arguments.

/// The item under a key of a descriptor.
struct KeyedSlot {
  PIActionDescriptor descriptor;
  DescriptorKeyID key;

  static constexpr SuiteId suite = SuiteId::descriptor;
  const Item& item(const char* procedure) const;
  void put(Item item, const char* procedure) const;

  static OSErr withSlot(auto body, const char* procedure, PIActionDescriptor descriptor,
                        DescriptorKeyID key, auto... arguments) {
    return body(procedure, KeyedSlot{descriptor, key}, arguments...);
  }
};

/// The item at an index of a list.
struct ListItem {
  PIActionList list;
  uint32 index;

  static constexpr SuiteId suite = SuiteId::list;
  const Item& item(const char* procedure) const;

  static OSErr withSlot(auto body, const char* procedure, PIActionList list, uint32 index,
                        auto... arguments) {
    return body(procedure, ListItem{list, index}, arguments...);
  }
};

/// The place after the last item of a list.
struct ListEnd {
  PIActionList list;

  static constexpr SuiteId suite = SuiteId::list;
  void put(Item item, const char* procedure) const;

  static OSErr withSlot(auto body, const char* procedure, PIActionList list, auto... arguments) {
    return body(procedure, ListEnd{list}, arguments...);
  }
};

/// The container of a handle, for writing: copied first if it is shared.
Container& writable(PIActionDescriptor descriptor, const char* procedure);
Container& writable(PIActionList list, const char* procedure);

/// A list of `count` integers. Throws paramErr if `values` is null and `count` is not 0.
NestedContainer integerList(uint32 count, const int32* values);
/// Reads the first `count` items of a list. Throws errMissingParameter if it is shorter, and
/// kWrongDataType if one of them is not an integer.
void readIntegers(const Container& list, uint32 count, int32* values);

/// The file of an alias or of bookmark data. Throw paramErr for anything else: an alias record has
/// at least its header of six bytes, and bookmark data begin with a mark of four.
FilePath fileOfAlias(Handle alias, const char* procedure);
FilePath fileOfBookmark(CFDataRef bookmark);

/// A new alias and new bookmark data of a file, with its bytes if they are known.
Handle aliasOf(const FilePath& file, const char* procedure);
CFDataRef bookmarkOf(const FilePath& file);

/// Puts `value`.
template <class Slot>
OSErr putItem(const char* procedure, Slot slot, DescriptorTypeID type, Value value) {
  return hostCall<OSErr>(Slot::suite, procedure,
                         [&] { slot.put({type, std::move(value)}, procedure); });
}

/// Puts the value that `make` returns; `make` may throw CallError.
template <class Slot, class Make>
OSErr putMade(const char* procedure, Slot slot, DescriptorTypeID type, Make&& make) {
  return hostCall<OSErr>(Slot::suite, procedure,
                         [&] { slot.put({type, std::forward<Make>(make)()}, procedure); });
}

/// Passes the value in the slot to `read`. Throws kWrongDataType if it is not a T.
template <class T, class Slot, class Read>
OSErr getItem(const char* procedure, Slot slot, Read&& read) {
  return hostCall<OSErr>(Slot::suite, procedure, [&] {
    const T* value = std::get_if<T>(&slot.item(procedure).value);
    if (value == nullptr) throw CallError{kWrongDataType};
    std::forward<Read>(read)(*value);
  });
}

// The bodies of the procedures that descriptors and lists have in common.

template <class Slot, DescriptorTypeID kType, class T>
OSErr putPlain(const char* procedure, Slot slot, T value) {
  return putItem(procedure, slot, kType, value);
}

template <class Slot>
OSErr putUnitFloat(const char* procedure, Slot slot, DescriptorUnitID unit, real64 value) {
  return putItem(procedure, slot, kTypeUnitFloat, UnitFloat{unit, value});
}

template <class Slot>
OSErr putBoolean(const char* procedure, Slot slot, Boolean value) {
  return putItem(procedure, slot, kTypeBoolean, value != 0);
}

template <class Slot>
OSErr putEnumerated(const char* procedure, Slot slot, DescriptorEnumTypeID type,
                    DescriptorEnumID value) {
  return putItem(procedure, slot, kTypeEnumerated, Enumerated{type, value});
}

template <class Slot, DescriptorTypeID kType>
OSErr putClass(const char* procedure, Slot slot, DescriptorClassID value) {
  return putItem(procedure, slot, kType, ClassID{value});
}

template <class Slot>
OSErr putText(const char* procedure, Slot slot, const char* text) {
  return putMade(procedure, slot, kTypeText, [&] { return Text{&destination(text)}; });
}

template <class Slot>
OSErr putString(const char* procedure, Slot slot, ASZString string) {
  return putMade(procedure, slot, kTypeText,
                 [&] { return textFrom(hostState().strings.at(string, procedure).text); });
}

template <class Slot>
OSErr putList(const char* procedure, Slot slot, PIActionList list) {
  return putMade(procedure, slot, kTypeValueList,
                 [&] { return List{hostState().lists.at(list, procedure)}; });
}

template <class Slot, DescriptorTypeID kType>
OSErr putObject(const char* procedure, Slot slot, DescriptorClassID type,
                PIActionDescriptor object) {
  return putMade(procedure, slot, kType,
                 [&] { return Object{type, hostState().descriptors.at(object, procedure)}; });
}

template <class Slot>
OSErr putReference(const char* procedure, Slot slot, PIActionReference reference) {
  return putMade(procedure, slot, kTypeObjectReference, [&] {
    const Forms forms = hostState().references.at(reference, procedure).forms();
    return Reference(forms.begin(), forms.end());
  });
}

template <class Slot>
OSErr putData(const char* procedure, Slot slot, int32 length, const void* bytes) {
  return putMade(procedure, slot, kTypeRawData, [&] {
    if (length < 0 || (length > 0 && bytes == nullptr)) throw CallError{paramErr};
    return Data{std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(length))};
  });
}

template <class Slot>
OSErr putAlias(const char* procedure, Slot slot, Handle alias) {
  return putMade(procedure, slot, kTypeAlias, [&] { return fileOfAlias(alias, procedure); });
}

template <class Slot>
OSErr putBookmark(const char* procedure, Slot slot, CFDataRef bookmark) {
  return putMade(procedure, slot, kTypeBookmark, [&] { return fileOfBookmark(bookmark); });
}

template <class Slot, class T>
OSErr getPlain(const char* procedure, Slot slot, T* value) {
  return getItem<T>(procedure, slot, [&](T item) { destination(value) = item; });
}

template <class Slot>
OSErr getBoolean(const char* procedure, Slot slot, Boolean* value) {
  return getItem<bool>(procedure, slot, [&](bool item) { destination(value) = item; });
}

template <class Slot>
OSErr getUnitFloat(const char* procedure, Slot slot, DescriptorUnitID* unit, real64* value) {
  return getItem<UnitFloat>(procedure, slot, [&](const UnitFloat& item) {
    destination(unit) = item.unit;
    destination(value) = item.value;
  });
}

template <class Slot>
OSErr getEnumerated(const char* procedure, Slot slot, DescriptorEnumTypeID* type,
                    DescriptorEnumID* value) {
  return getItem<Enumerated>(procedure, slot, [&](const Enumerated& item) {
    destination(type) = item.type;
    destination(value) = item.value;
  });
}

template <class Slot>
OSErr getClass(const char* procedure, Slot slot, DescriptorClassID* value) {
  return getItem<ClassID>(procedure, slot,
                          [&](const ClassID& item) { destination(value) = item.id; });
}

template <class Slot>
OSErr getTextLength(const char* procedure, Slot slot, uint32* length) {
  return getItem<Text>(procedure, slot, [&](const Text& item) {
    destination(length) = static_cast<uint32>(item.utf8.size());
  });
}

template <class Slot>
OSErr getText(const char* procedure, Slot slot, char* text, uint32 maxLength) {
  return getItem<Text>(procedure, slot, [&](const Text& item) {
    copyText(item.utf8, &destination(text), maxLength);
  });
}

template <class Slot>
OSErr getString(const char* procedure, Slot slot, ASZString* string) {
  return getItem<Text>(procedure, slot, [&](const Text& item) {
    handOut(string,
            [&] { return hostState().strings.add({unitsOf(item.utf8, item.exact)}, procedure); });
  });
}

/// Shares a nested container with a new handle. Casting const away is safe, since `writable` copies
/// a shared container.
inline ContainerPtr shared(const NestedContainer& content) {
  return std::const_pointer_cast<Container>(content);
}

template <class Slot>
OSErr getList(const char* procedure, Slot slot, PIActionList* list) {
  return getItem<List>(procedure, slot, [&](const List& item) {
    handOut(list, [&] { return hostState().lists.add(shared(item.content), procedure); });
  });
}

template <class Slot>
OSErr getObject(const char* procedure, Slot slot, DescriptorClassID* type,
                PIActionDescriptor* object) {
  return getItem<Object>(procedure, slot, [&](const Object& item) {
    destination(type) = item.type;
    handOut(object, [&] { return hostState().descriptors.add(shared(item.content), procedure); });
  });
}

template <class Slot>
OSErr getReference(const char* procedure, Slot slot, PIActionReference* reference) {
  return getItem<Reference>(procedure, slot, [&](const Reference& item) {
    handOut(reference,
            [&] { return hostState().references.add(SharedReference(item), procedure); });
  });
}

/// Reads an alias item or a path item.
template <class Slot>
OSErr getAlias(const char* procedure, Slot slot, Handle* alias) {
  return getItem<FilePath>(procedure, slot, [&](const FilePath& item) {
    if (slot.item(procedure).type == kTypeBookmark) throw CallError{kWrongDataType};
    handOut(alias, [&] { return aliasOf(item, procedure); });
  });
}

template <class Slot>
OSErr getBookmark(const char* procedure, Slot slot, CFDataRef* bookmark) {
  return getItem<FilePath>(procedure, slot, [&](const FilePath& item) {
    if (slot.item(procedure).type != kTypeBookmark) throw CallError{kWrongDataType};
    handOut(bookmark, [&] { return bookmarkOf(item); });
  });
}

template <class Slot>
OSErr getDataLength(const char* procedure, Slot slot, int32* length) {
  return getItem<Data>(procedure, slot, [&](const Data& item) {
    destination(length) = static_cast<int32>(item.bytes.size());
  });
}

template <class Slot>
OSErr getData(const char* procedure, Slot slot, void* bytes) {
  return getItem<Data>(procedure, slot, [&](const Data& item) {
    if (bytes == nullptr) throw CallError{paramErr};
    std::copy(item.bytes.begin(), item.bytes.end(), static_cast<char*>(bytes));
  });
}

/// What the rows below need to know of a suite: its record, the slot that a getter reads, the slot
/// that a putter writes, and the prefix of its procedures' names.
struct DescriptorItems {
  using Record = PSActionDescriptorProcs;
  using Source = KeyedSlot;
  using Target = KeyedSlot;
  static constexpr FixedString kPrefix = "ActionDescriptor.";
};

struct ListItems {
  using Record = PSActionListProcs;
  using Source = ListItem;
  using Target = ListEnd;
  static constexpr FixedString kPrefix = "ActionList.";
};

/// A row whose body gets a slot in place of the arguments that name it.
template <class Slot, FixedString kName, auto kMember, auto kBody>
inline constexpr auto slotRow = row<kName, kMember, [](const char* procedure, auto... arguments) {
  return Slot::withSlot(kBody, procedure, arguments...);
}>;

template <class Items, FixedString kName, auto kMember, auto kBody>
inline constexpr auto putRow =
    slotRow<typename Items::Target, Items::kPrefix + kName, kMember, kBody>;

template <class Items, FixedString kName, auto kMember, auto kBody>
inline constexpr auto getRow =
    slotRow<typename Items::Source, Items::kPrefix + kName, kMember, kBody>;

/// The procedures that descriptors and lists have in common.
template <class Items>
consteval auto itemProcedures() {
  using Record = typename Items::Record;
  using Source = typename Items::Source;
  using Target = typename Items::Target;
  return std::to_array<Procedure<Record>>({
      putRow<Items, "PutInteger", &Record::PutInteger, putPlain<Target, kTypeInteger, int32>>,
      putRow<Items, "PutInteger64", &Record::PutInteger64, putPlain<Target, kTypeInteger64, int64>>,
      putRow<Items, "PutFloat", &Record::PutFloat, putPlain<Target, kTypeFloat, real64>>,
      putRow<Items, "PutUnitFloat", &Record::PutUnitFloat, putUnitFloat<Target>>,
      putRow<Items, "PutString", &Record::PutString, putText<Target>>,
      putRow<Items, "PutZString", &Record::PutZString, putString<Target>>,
      putRow<Items, "PutBoolean", &Record::PutBoolean, putBoolean<Target>>,
      putRow<Items, "PutEnumerated", &Record::PutEnumerated, putEnumerated<Target>>,
      putRow<Items, "PutClass", &Record::PutClass, putClass<Target, kTypeClass>>,
      putRow<Items, "PutGlobalClass", &Record::PutGlobalClass, putClass<Target, kTypeGlobalClass>>,
      putRow<Items, "PutObject", &Record::PutObject, putObject<Target, kTypeObject>>,
      putRow<Items, "PutGlobalObject", &Record::PutGlobalObject,
             putObject<Target, kTypeGlobalObject>>,
      putRow<Items, "PutList", &Record::PutList, putList<Target>>,
      putRow<Items, "PutReference", &Record::PutReference, putReference<Target>>,
      putRow<Items, "PutAlias", &Record::PutAlias, putAlias<Target>>,
      putRow<Items, "PutBookmark", &Record::PutBookmark, putBookmark<Target>>,
      putRow<Items, "PutData", &Record::PutData, putData<Target>>,
      getRow<Items, "GetInteger", &Record::GetInteger, getPlain<Source, int32>>,
      getRow<Items, "GetInteger64", &Record::GetInteger64, getPlain<Source, int64>>,
      getRow<Items, "GetFloat", &Record::GetFloat, getPlain<Source, real64>>,
      getRow<Items, "GetUnitFloat", &Record::GetUnitFloat, getUnitFloat<Source>>,
      getRow<Items, "GetStringLength", &Record::GetStringLength, getTextLength<Source>>,
      getRow<Items, "GetString", &Record::GetString, getText<Source>>,
      getRow<Items, "GetZString", &Record::GetZString, getString<Source>>,
      getRow<Items, "GetBoolean", &Record::GetBoolean, getBoolean<Source>>,
      getRow<Items, "GetEnumerated", &Record::GetEnumerated, getEnumerated<Source>>,
      getRow<Items, "GetClass", &Record::GetClass, getClass<Source>>,
      getRow<Items, "GetGlobalClass", &Record::GetGlobalClass, getClass<Source>>,
      getRow<Items, "GetObject", &Record::GetObject, getObject<Source>>,
      getRow<Items, "GetGlobalObject", &Record::GetGlobalObject, getObject<Source>>,
      getRow<Items, "GetList", &Record::GetList, getList<Source>>,
      getRow<Items, "GetReference", &Record::GetReference, getReference<Source>>,
      getRow<Items, "GetAlias", &Record::GetAlias, getAlias<Source>>,
      getRow<Items, "GetBookmark", &Record::GetBookmark, getBookmark<Source>>,
      getRow<Items, "GetDataLength", &Record::GetDataLength, getDataLength<Source>>,
      getRow<Items, "GetData", &Record::GetData, getData<Source>>,
  });
}

}  // namespace simulator
