// Lists: items by index.
#include <utility>

#include "simulator/host/suites/ItemAccess.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

Container& writable(PIActionList list, const char* procedure) {
  ContainerPtr& container = hostState().lists.at(list, procedure);
  if (container.use_count() > 1) container = std::make_shared<Container>(*container);
  return *container;
}

const Item& IndexedSlot::item(const char* procedure) const {
  const auto& entries = hostState().lists.at(list, procedure)->entries;
  if (index >= entries.size()) throw CallError{errMissingParameter};
  return entries[index].item;
}

void IndexedSlot::put(Item item, const char* procedure) const {
  writable(list, procedure).entries.push_back({0, std::move(item)});
}

NestedContainer integerList(uint32 count, const int32* values) {
  if (count > 0 && values == nullptr) throw CallError{paramErr};
  auto list = std::make_shared<Container>();
  for (uint32 i = 0; i < count; ++i) list->entries.push_back({0, {kTypeInteger, values[i]}});
  return list;
}

void readIntegers(const Container& list, uint32 count, int32* values) {
  if (list.entries.size() < count) throw CallError{errMissingParameter};
  for (uint32 i = 0; i < count; ++i) {
    const auto* value = std::get_if<std::int32_t>(&list.entries[i].item.value);
    if (value == nullptr) throw CallError{kWrongDataType};
    values[i] = *value;
  }
}

namespace {

template <class Body>
OSErr call(const char* procedure, Body&& body) {
  return hostCall<OSErr>(SuiteId::list, procedure, std::forward<Body>(body));
}

OSErr make(PIActionList* list) {
  constexpr const char* procedure = "ActionList.Make";
  return call(procedure, [&] {
    handOut(list, [&] { return hostState().lists.add(std::make_shared<Container>(), procedure); });
  });
}

OSErr free(PIActionList list) {
  constexpr const char* procedure = "ActionList.Free";
  return hostRelease<OSErr>(SuiteId::list, procedure,
                            [&] { hostState().lists.free(list, procedure); });
}

OSErr getType(PIActionList list, uint32 index, DescriptorTypeID* type) {
  constexpr const char* procedure = "ActionList.GetType";
  return call(procedure,
              [&] { destination(type) = IndexedSlot{list, index}.item(procedure).type; });
}

OSErr getCount(PIActionList list, uint32* count) {
  constexpr const char* procedure = "ActionList.GetCount";
  return call(procedure, [&] {
    destination(count) = static_cast<uint32>(hostState().lists.at(list, procedure)->entries.size());
  });
}

OSErr putIntegers(PIActionList list, uint32 count, const int32* values) {
  constexpr const char* procedure = "ActionList.PutIntegers";
  return call(procedure, [&] {
    const NestedContainer added = integerList(count, values);
    auto& entries = writable(list, procedure).entries;
    entries.insert(entries.end(), added->entries.begin(), added->entries.end());
  });
}

OSErr getIntegers(PIActionList list, uint32 count, int32* values) {
  constexpr const char* procedure = "ActionList.GetIntegers";
  return call(procedure, [&] {
    readIntegers(*hostState().lists.at(list, procedure), count, &destination(values));
  });
}

}  // namespace

const PSActionListProcs listSuite = {
    .Make = make,
    .Free = free,
    .GetType = getType,
    .GetCount = getCount,
    .PutInteger =
        [](PIActionList list, int32 value) {
          return putItem("ActionList.PutInteger", IndexedSlot{list}, kTypeInteger, value);
        },
    .PutFloat =
        [](PIActionList list, real64 value) {
          return putItem("ActionList.PutFloat", IndexedSlot{list}, kTypeFloat, value);
        },
    .PutUnitFloat =
        [](PIActionList list, DescriptorUnitID unit, real64 value) {
          return putItem("ActionList.PutUnitFloat", IndexedSlot{list}, kTypeUnitFloat,
                         UnitFloat{unit, value});
        },
    .PutString =
        [](PIActionList list, const char* value) {
          return putText("ActionList.PutString", IndexedSlot{list}, value);
        },
    .PutBoolean =
        [](PIActionList list, Boolean value) {
          return putItem("ActionList.PutBoolean", IndexedSlot{list}, kTypeBoolean, value != 0);
        },
    .PutList =
        [](PIActionList list, PIActionList value) {
          return putList("ActionList.PutList", IndexedSlot{list}, value);
        },
    .PutObject =
        [](PIActionList list, DescriptorClassID type, PIActionDescriptor value) {
          return putObject("ActionList.PutObject", IndexedSlot{list}, kTypeObject, type, value);
        },
    .PutGlobalObject =
        [](PIActionList list, DescriptorClassID type, PIActionDescriptor value) {
          return putObject("ActionList.PutGlobalObject", IndexedSlot{list}, kTypeGlobalObject, type,
                           value);
        },
    .PutEnumerated =
        [](PIActionList list, DescriptorEnumTypeID type, DescriptorEnumID value) {
          return putItem("ActionList.PutEnumerated", IndexedSlot{list}, kTypeEnumerated,
                         Enumerated{type, value});
        },
    .PutReference =
        [](PIActionList list, PIActionReference value) {
          return putReference("ActionList.PutReference", IndexedSlot{list}, value);
        },
    .PutClass =
        [](PIActionList list, DescriptorClassID value) {
          return putItem("ActionList.PutClass", IndexedSlot{list}, kTypeClass, ClassID{value});
        },
    .PutGlobalClass =
        [](PIActionList list, DescriptorClassID value) {
          return putItem("ActionList.PutGlobalClass", IndexedSlot{list}, kTypeGlobalClass,
                         ClassID{value});
        },
    .PutAlias =
        [](PIActionList list, Handle value) {
          return putAlias("ActionList.PutAlias", IndexedSlot{list}, value);
        },
    .GetInteger =
        [](PIActionList list, uint32 index, int32* value) {
          return getPlain("ActionList.GetInteger", IndexedSlot{list, index}, value);
        },
    .GetFloat =
        [](PIActionList list, uint32 index, real64* value) {
          return getPlain("ActionList.GetFloat", IndexedSlot{list, index}, value);
        },
    .GetUnitFloat =
        [](PIActionList list, uint32 index, DescriptorUnitID* unit, real64* value) {
          return getUnitFloat("ActionList.GetUnitFloat", IndexedSlot{list, index}, unit, value);
        },
    .GetStringLength =
        [](PIActionList list, uint32 index, uint32* stringLength) {
          return getTextLength("ActionList.GetStringLength", IndexedSlot{list, index},
                               stringLength);
        },
    .GetString =
        [](PIActionList list, uint32 index, char* value, uint32 maxLength) {
          return getText("ActionList.GetString", IndexedSlot{list, index}, value, maxLength);
        },
    .GetBoolean =
        [](PIActionList list, uint32 index, Boolean* value) {
          return getBoolean("ActionList.GetBoolean", IndexedSlot{list, index}, value);
        },
    .GetList =
        [](PIActionList list, uint32 index, PIActionList* value) {
          return getList("ActionList.GetList", IndexedSlot{list, index}, value);
        },
    .GetObject =
        [](PIActionList list, uint32 index, DescriptorClassID* type, PIActionDescriptor* value) {
          return getObject("ActionList.GetObject", IndexedSlot{list, index}, type, value);
        },
    .GetGlobalObject =
        [](PIActionList list, uint32 index, DescriptorClassID* type, PIActionDescriptor* value) {
          return getObject("ActionList.GetGlobalObject", IndexedSlot{list, index}, type, value);
        },
    .GetEnumerated =
        [](PIActionList list, uint32 index, DescriptorEnumTypeID* type, DescriptorEnumID* value) {
          return getEnumerated("ActionList.GetEnumerated", IndexedSlot{list, index}, type, value);
        },
    .GetReference =
        [](PIActionList list, uint32 index, PIActionReference* value) {
          return getReference("ActionList.GetReference", IndexedSlot{list, index}, value);
        },
    .GetClass =
        [](PIActionList list, uint32 index, DescriptorClassID* value) {
          return getClass("ActionList.GetClass", IndexedSlot{list, index}, value);
        },
    .GetGlobalClass =
        [](PIActionList list, uint32 index, DescriptorClassID* value) {
          return getClass("ActionList.GetGlobalClass", IndexedSlot{list, index}, value);
        },
    .GetAlias =
        [](PIActionList list, uint32 index, Handle* value) {
          return getAlias("ActionList.GetAlias", IndexedSlot{list, index}, value);
        },
    .PutIntegers = putIntegers,
    .GetIntegers = getIntegers,
    .PutData =
        [](PIActionList list, int32 length, const void* value) {
          return putData("ActionList.PutData", IndexedSlot{list}, length, value);
        },
    .GetDataLength =
        [](PIActionList list, uint32 index, int32* length) {
          return getDataLength("ActionList.GetDataLength", IndexedSlot{list, index}, length);
        },
    .GetData =
        [](PIActionList list, uint32 index, void* value) {
          return getData("ActionList.GetData", IndexedSlot{list, index}, value);
        },
    .PutZString =
        [](PIActionList list, ASZString value) {
          return putString("ActionList.PutZString", IndexedSlot{list}, value);
        },
    .GetZString =
        [](PIActionList list, uint32 index, ASZString* value) {
          return getString("ActionList.GetZString", IndexedSlot{list, index}, value);
        },
    .PutInteger64 =
        [](PIActionList list, int64 value) {
          return putItem("ActionList.PutInteger64", IndexedSlot{list}, kTypeInteger64, value);
        },
    .GetInteger64 =
        [](PIActionList list, uint32 index, int64* value) {
          return getPlain("ActionList.GetInteger64", IndexedSlot{list, index}, value);
        },
    .PutBookmark =
        [](PIActionList list, CFDataRef value) {
          return putBookmark("ActionList.PutBookmark", IndexedSlot{list}, value);
        },
    .GetBookmark =
        [](PIActionList list, uint32 index, CFDataRef* value) {
          return getBookmark("ActionList.GetBookmark", IndexedSlot{list, index}, value);
        },
};

}  // namespace simulator
