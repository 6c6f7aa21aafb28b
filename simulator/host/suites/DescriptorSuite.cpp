// Descriptors: items by key.
#include <algorithm>
#include <utility>

#include "simulator/host/json/DescriptorJson.h"
#include "simulator/host/suites/ItemAccess.h"
#include "simulator/host/suites/Suites.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

Container& writable(PIActionDescriptor descriptor, const char* procedure) {
  ContainerPtr& container = hostState().descriptors.at(descriptor, procedure);
  if (container.use_count() > 1) container = std::make_shared<Container>(*container);
  return *container;
}

const Item& KeyedSlot::item(const char* procedure) const {
  const Item* found = hostState().descriptors.at(descriptor, procedure)->find(key);
  if (found == nullptr) throw CallError{errMissingParameter};
  return *found;
}

void KeyedSlot::put(Item item, const char* procedure) const {
  writable(descriptor, procedure).put(key, std::move(item));
}

namespace {

template <class Body>
OSErr call(const char* procedure, Body&& body) {
  return hostCall<OSErr>(SuiteId::descriptor, procedure, std::forward<Body>(body));
}

const Container& content(PIActionDescriptor descriptor, const char* procedure) {
  return *hostState().descriptors.at(descriptor, procedure);
}

OSErr make(PIActionDescriptor* descriptor) {
  constexpr const char* procedure = "ActionDescriptor.Make";
  return call(procedure, [&] {
    handOut(descriptor,
            [&] { return hostState().descriptors.add(std::make_shared<Container>(), procedure); });
  });
}

OSErr free(PIActionDescriptor descriptor) {
  constexpr const char* procedure = "ActionDescriptor.Free";
  return hostRelease<OSErr>(SuiteId::descriptor, procedure,
                            [&] { hostState().descriptors.free(descriptor, procedure); });
}

OSErr getType(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorTypeID* type) {
  constexpr const char* procedure = "ActionDescriptor.GetType";
  return call(procedure,
              [&] { destination(type) = KeyedSlot{descriptor, key}.item(procedure).type; });
}

OSErr getKey(PIActionDescriptor descriptor, uint32 index, DescriptorKeyID* key) {
  constexpr const char* procedure = "ActionDescriptor.GetKey";
  return call(procedure, [&] {
    const auto& entries = content(descriptor, procedure).entries;
    if (index >= entries.size()) throw CallError{errMissingParameter};
    destination(key) = entries[index].key;
  });
}

OSErr hasKey(PIActionDescriptor descriptor, DescriptorKeyID key, Boolean* has) {
  constexpr const char* procedure = "ActionDescriptor.HasKey";
  return call(procedure,
              [&] { destination(has) = content(descriptor, procedure).find(key) != nullptr; });
}

OSErr getCount(PIActionDescriptor descriptor, uint32* count) {
  constexpr const char* procedure = "ActionDescriptor.GetCount";
  return call(procedure, [&] {
    destination(count) = static_cast<uint32>(content(descriptor, procedure).entries.size());
  });
}

OSErr isEqual(PIActionDescriptor descriptor, PIActionDescriptor other, Boolean* result) {
  constexpr const char* procedure = "ActionDescriptor.IsEqual";
  return call(procedure, [&] {
    destination(result) = equal(content(descriptor, procedure), content(other, procedure));
  });
}

OSErr erase(PIActionDescriptor descriptor, DescriptorKeyID key) {
  constexpr const char* procedure = "ActionDescriptor.Erase";
  return call(procedure, [&] {
    if (!writable(descriptor, procedure).erase(key)) throw CallError{errMissingParameter};
  });
}

OSErr clear(PIActionDescriptor descriptor) {
  constexpr const char* procedure = "ActionDescriptor.Clear";
  return call(procedure, [&] { writable(descriptor, procedure).clear(); });
}

OSErr hasKeys(PIActionDescriptor descriptor, const DescriptorKeyID* required, Boolean* result) {
  constexpr const char* procedure = "ActionDescriptor.HasKeys";
  return call(procedure, [&] {
    const Container& container = content(descriptor, procedure);
    const DescriptorKeyID* key = &destination(required);
    while (*key != 0 && container.find(*key)) ++key;
    destination(result) = *key == 0;
  });
}

// Several integers under one key are a list.
OSErr putIntegers(PIActionDescriptor descriptor, DescriptorKeyID key, uint32 count,
                  const int32* values) {
  constexpr const char* procedure = "ActionDescriptor.PutIntegers";
  return putMade(procedure, KeyedSlot{descriptor, key}, kTypeValueList,
                 [&] { return List{integerList(count, values)}; });
}

OSErr getIntegers(PIActionDescriptor descriptor, DescriptorKeyID key, uint32 count, int32* values) {
  constexpr const char* procedure = "ActionDescriptor.GetIntegers";
  return getItem<List>(procedure, KeyedSlot{descriptor, key}, [&](const List& item) {
    readIntegers(*item.content, count, &destination(values));
  });
}

// A handle holds the descriptor in the form in which it is written in files.
OSErr asHandle(PIActionDescriptor descriptor, Handle* value) {
  constexpr const char* procedure = "ActionDescriptor.AsHandle";
  return call(procedure, [&] {
    const Json json = descriptorToJson(content(descriptor, procedure), hostState().ids);
    handOut(value, [&] { return theMemoryHandles().make(json.dump(), procedure); });
  });
}

ContainerPtr parseDescriptor(std::string_view text) {
  try {
    if (auto descriptor = descriptorFromJson(Json::parse(text), hostState().ids)) return descriptor;
  } catch (const std::exception&) {
    // Whatever is wrong with it, the handle holds no descriptor.
  }
  throw CallError{paramErr};
}

OSErr handleToDescriptor(Handle value, PIActionDescriptor* descriptor) {
  constexpr const char* procedure = "ActionDescriptor.HandleToDescriptor";
  return call(procedure, [&] {
    ContainerPtr content = parseDescriptor(theMemoryHandles().bytes(value, procedure));
    handOut(descriptor, [&] { return hostState().descriptors.add(std::move(content), procedure); });
  });
}

}  // namespace

const PSActionDescriptorProcs descriptorSuite = {
    .Make = make,
    .Free = free,
    .GetType = getType,
    .GetKey = getKey,
    .HasKey = hasKey,
    .GetCount = getCount,
    .IsEqual = isEqual,
    .Erase = erase,
    .Clear = clear,
    .PutInteger =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, int32 value) {
          return putItem("ActionDescriptor.PutInteger", KeyedSlot{descriptor, key}, kTypeInteger,
                         value);
        },
    .PutFloat =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, real64 value) {
          return putItem("ActionDescriptor.PutFloat", KeyedSlot{descriptor, key}, kTypeFloat,
                         value);
        },
    .PutUnitFloat =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorUnitID unit,
           real64 value) {
          return putItem("ActionDescriptor.PutUnitFloat", KeyedSlot{descriptor, key},
                         kTypeUnitFloat, UnitFloat{unit, value});
        },
    .PutString =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, const char* value) {
          return putText("ActionDescriptor.PutString", KeyedSlot{descriptor, key}, value);
        },
    .PutBoolean =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, Boolean value) {
          return putItem("ActionDescriptor.PutBoolean", KeyedSlot{descriptor, key}, kTypeBoolean,
                         value != 0);
        },
    .PutList =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, PIActionList value) {
          return putList("ActionDescriptor.PutList", KeyedSlot{descriptor, key}, value);
        },
    .PutObject =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID type,
           PIActionDescriptor value) {
          return putObject("ActionDescriptor.PutObject", KeyedSlot{descriptor, key}, kTypeObject,
                           type, value);
        },
    .PutGlobalObject =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID type,
           PIActionDescriptor value) {
          return putObject("ActionDescriptor.PutGlobalObject", KeyedSlot{descriptor, key},
                           kTypeGlobalObject, type, value);
        },
    .PutEnumerated =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorEnumTypeID type,
           DescriptorEnumID value) {
          return putItem("ActionDescriptor.PutEnumerated", KeyedSlot{descriptor, key},
                         kTypeEnumerated, Enumerated{type, value});
        },
    .PutReference =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, PIActionReference value) {
          return putReference("ActionDescriptor.PutReference", KeyedSlot{descriptor, key}, value);
        },
    .PutClass =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID value) {
          return putItem("ActionDescriptor.PutClass", KeyedSlot{descriptor, key}, kTypeClass,
                         ClassID{value});
        },
    .PutGlobalClass =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID value) {
          return putItem("ActionDescriptor.PutGlobalClass", KeyedSlot{descriptor, key},
                         kTypeGlobalClass, ClassID{value});
        },
    .PutAlias =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, Handle value) {
          return putAlias("ActionDescriptor.PutAlias", KeyedSlot{descriptor, key}, value);
        },
    .GetInteger =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, int32* value) {
          return getPlain("ActionDescriptor.GetInteger", KeyedSlot{descriptor, key}, value);
        },
    .GetFloat =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, real64* value) {
          return getPlain("ActionDescriptor.GetFloat", KeyedSlot{descriptor, key}, value);
        },
    .GetUnitFloat =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorUnitID* unit,
           real64* value) {
          return getUnitFloat("ActionDescriptor.GetUnitFloat", KeyedSlot{descriptor, key}, unit,
                              value);
        },
    .GetStringLength =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, uint32* stringLength) {
          return getTextLength("ActionDescriptor.GetStringLength", KeyedSlot{descriptor, key},
                               stringLength);
        },
    .GetString =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, char* value, uint32 maxLength) {
          return getText("ActionDescriptor.GetString", KeyedSlot{descriptor, key}, value,
                         maxLength);
        },
    .GetBoolean =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, Boolean* value) {
          return getBoolean("ActionDescriptor.GetBoolean", KeyedSlot{descriptor, key}, value);
        },
    .GetList =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, PIActionList* value) {
          return getList("ActionDescriptor.GetList", KeyedSlot{descriptor, key}, value);
        },
    .GetObject =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* type,
           PIActionDescriptor* value) {
          return getObject("ActionDescriptor.GetObject", KeyedSlot{descriptor, key}, type, value);
        },
    .GetGlobalObject =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* type,
           PIActionDescriptor* value) {
          return getObject("ActionDescriptor.GetGlobalObject", KeyedSlot{descriptor, key}, type,
                           value);
        },
    .GetEnumerated =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorEnumTypeID* type,
           DescriptorEnumID* value) {
          return getEnumerated("ActionDescriptor.GetEnumerated", KeyedSlot{descriptor, key}, type,
                               value);
        },
    .GetReference =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, PIActionReference* value) {
          return getReference("ActionDescriptor.GetReference", KeyedSlot{descriptor, key}, value);
        },
    .GetClass =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* value) {
          return getClass("ActionDescriptor.GetClass", KeyedSlot{descriptor, key}, value);
        },
    .GetGlobalClass =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* value) {
          return getClass("ActionDescriptor.GetGlobalClass", KeyedSlot{descriptor, key}, value);
        },
    .GetAlias =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, Handle* value) {
          return getAlias("ActionDescriptor.GetAlias", KeyedSlot{descriptor, key}, value);
        },
    .HasKeys = hasKeys,
    .PutIntegers = putIntegers,
    .GetIntegers = getIntegers,
    .AsHandle = asHandle,
    .HandleToDescriptor = handleToDescriptor,
    .PutZString =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, ASZString value) {
          return putString("ActionDescriptor.PutZString", KeyedSlot{descriptor, key}, value);
        },
    .GetZString =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, ASZString* value) {
          return getString("ActionDescriptor.GetZString", KeyedSlot{descriptor, key}, value);
        },
    .PutData =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, int32 length, const void* value) {
          return putData("ActionDescriptor.PutData", KeyedSlot{descriptor, key}, length, value);
        },
    .GetDataLength =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, int32* length) {
          return getDataLength("ActionDescriptor.GetDataLength", KeyedSlot{descriptor, key},
                               length);
        },
    .GetData =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, void* value) {
          return getData("ActionDescriptor.GetData", KeyedSlot{descriptor, key}, value);
        },
    .PutInteger64 =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, int64 value) {
          return putItem("ActionDescriptor.PutInteger64", KeyedSlot{descriptor, key},
                         kTypeInteger64, value);
        },
    .GetInteger64 =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, int64* value) {
          return getPlain("ActionDescriptor.GetInteger64", KeyedSlot{descriptor, key}, value);
        },
    .PutBookmark =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, CFDataRef value) {
          return putBookmark("ActionDescriptor.PutBookmark", KeyedSlot{descriptor, key}, value);
        },
    .GetBookmark =
        [](PIActionDescriptor descriptor, DescriptorKeyID key, CFDataRef* value) {
          return getBookmark("ActionDescriptor.GetBookmark", KeyedSlot{descriptor, key}, value);
        },
};

}  // namespace simulator
