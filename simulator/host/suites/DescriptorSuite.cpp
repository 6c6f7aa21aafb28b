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

namespace descriptor_suite {
namespace {

OSErr call(const char* procedure, ProcedureBody body) {
  return hostCall<OSErr>(SuiteId::descriptor, procedure, body);
}

const Container& content(PIActionDescriptor descriptor, const char* procedure) {
  return *hostState().descriptors.at(descriptor, procedure);
}

OSErr make(const char* procedure, PIActionDescriptor* descriptor) {
  return call(procedure, [&] {
    handOut(descriptor,
            [&] { return hostState().descriptors.add(std::make_shared<Container>(), procedure); });
  });
}

OSErr free(const char* procedure, PIActionDescriptor descriptor) {
  return hostRelease<OSErr>(SuiteId::descriptor, procedure,
                            [&] { hostState().descriptors.free(descriptor, procedure); });
}

OSErr getType(const char* procedure, PIActionDescriptor descriptor, DescriptorKeyID key,
              DescriptorTypeID* type) {
  return call(procedure,
              [&] { destination(type) = KeyedSlot{descriptor, key}.item(procedure).type; });
}

OSErr getKey(const char* procedure, PIActionDescriptor descriptor, uint32 index,
             DescriptorKeyID* key) {
  return call(procedure, [&] {
    const auto& entries = content(descriptor, procedure).entries;
    if (index >= entries.size()) throw CallError{errMissingParameter};
    destination(key) = entries[index].key;
  });
}

OSErr hasKey(const char* procedure, PIActionDescriptor descriptor, DescriptorKeyID key,
             Boolean* has) {
  return call(procedure,
              [&] { destination(has) = content(descriptor, procedure).find(key) != nullptr; });
}

OSErr getCount(const char* procedure, PIActionDescriptor descriptor, uint32* count) {
  return call(procedure, [&] {
    destination(count) = static_cast<uint32>(content(descriptor, procedure).entries.size());
  });
}

OSErr isEqual(const char* procedure, PIActionDescriptor descriptor, PIActionDescriptor other,
              Boolean* result) {
  return call(procedure, [&] {
    destination(result) = equal(content(descriptor, procedure), content(other, procedure));
  });
}

OSErr erase(const char* procedure, PIActionDescriptor descriptor, DescriptorKeyID key) {
  return call(procedure, [&] {
    if (!writable(descriptor, procedure).erase(key)) throw CallError{errMissingParameter};
  });
}

OSErr clear(const char* procedure, PIActionDescriptor descriptor) {
  return call(procedure, [&] { writable(descriptor, procedure).clear(); });
}

OSErr hasKeys(const char* procedure, PIActionDescriptor descriptor, const DescriptorKeyID* required,
              Boolean* result) {
  return call(procedure, [&] {
    const Container& container = content(descriptor, procedure);
    const DescriptorKeyID* key = &destination(required);
    while (*key != 0 && container.find(*key)) ++key;
    destination(result) = *key == 0;
  });
}

// Stores the integers as one list item.
OSErr putIntegers(const char* procedure, PIActionDescriptor descriptor, DescriptorKeyID key,
                  uint32 count, const int32* values) {
  return putMade(procedure, KeyedSlot{descriptor, key}, kTypeValueList,
                 [&] { return List{integerList(count, values)}; });
}

OSErr getIntegers(const char* procedure, PIActionDescriptor descriptor, DescriptorKeyID key,
                  uint32 count, int32* values) {
  return getItem<List>(procedure, KeyedSlot{descriptor, key}, [&](const List& item) {
    readIntegers(*item.content, count, &destination(values));
  });
}

// The handle holds the descriptor as JSON text.
OSErr asHandle(const char* procedure, PIActionDescriptor descriptor, Handle* value) {
  return call(procedure, [&] {
    const Json json = descriptorToJson(content(descriptor, procedure), hostState().ids);
    handOut(value, [&] { return theMemoryHandles().make(json.dump(), procedure); });
  });
}

ContainerPtr parseDescriptor(std::string_view text) {
  try {
    if (auto descriptor = descriptorFromJson(jsonOf(text), hostState().ids)) return descriptor;
  } catch (const std::exception&) {
    // Every kind of malformed content gets the same error.
  }
  throw CallError{paramErr};
}

OSErr handleToDescriptor(const char* procedure, Handle value, PIActionDescriptor* descriptor) {
  return call(procedure, [&] {
    ContainerPtr content = parseDescriptor(theMemoryHandles().bytes(value, procedure));
    handOut(descriptor, [&] { return hostState().descriptors.add(std::move(content), procedure); });
  });
}

constexpr auto kProcedures = joined(
    std::to_array<Procedure<PSActionDescriptorProcs>>({
        row<"ActionDescriptor.Make", &PSActionDescriptorProcs::Make, make>,
        row<"ActionDescriptor.Free", &PSActionDescriptorProcs::Free, free>,
        row<"ActionDescriptor.GetType", &PSActionDescriptorProcs::GetType, getType>,
        row<"ActionDescriptor.GetKey", &PSActionDescriptorProcs::GetKey, getKey>,
        row<"ActionDescriptor.HasKey", &PSActionDescriptorProcs::HasKey, hasKey>,
        row<"ActionDescriptor.GetCount", &PSActionDescriptorProcs::GetCount, getCount>,
        row<"ActionDescriptor.IsEqual", &PSActionDescriptorProcs::IsEqual, isEqual>,
        row<"ActionDescriptor.Erase", &PSActionDescriptorProcs::Erase, erase>,
        row<"ActionDescriptor.Clear", &PSActionDescriptorProcs::Clear, clear>,
        row<"ActionDescriptor.HasKeys", &PSActionDescriptorProcs::HasKeys, hasKeys>,
        row<"ActionDescriptor.PutIntegers", &PSActionDescriptorProcs::PutIntegers, putIntegers>,
        row<"ActionDescriptor.GetIntegers", &PSActionDescriptorProcs::GetIntegers, getIntegers>,
        row<"ActionDescriptor.AsHandle", &PSActionDescriptorProcs::AsHandle, asHandle>,
        row<"ActionDescriptor.HandleToDescriptor", &PSActionDescriptorProcs::HandleToDescriptor,
            handleToDescriptor>,
    }),
    itemProcedures<DescriptorItems>());

}  // namespace
}  // namespace descriptor_suite

constinit const HostSuite<PSActionDescriptorProcs> descriptorSuite =
    suiteOf<descriptor_suite::kProcedures>();

}  // namespace simulator
