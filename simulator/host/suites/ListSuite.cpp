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

const Item& ListItem::item(const char* procedure) const {
  const auto& entries = hostState().lists.at(list, procedure)->entries;
  if (index >= entries.size()) throw CallError{errMissingParameter};
  return entries[index].item;
}

void ListEnd::put(Item item, const char* procedure) const {
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

namespace list_suite {
namespace {

OSErr call(const char* procedure, ProcedureBody body) {
  return hostCall<OSErr>(SuiteId::list, procedure, body);
}

OSErr make(const char* procedure, PIActionList* list) {
  return call(procedure, [&] {
    handOut(list, [&] { return hostState().lists.add(std::make_shared<Container>(), procedure); });
  });
}

OSErr free(const char* procedure, PIActionList list) {
  return hostRelease<OSErr>(SuiteId::list, procedure,
                            [&] { hostState().lists.free(list, procedure); });
}

OSErr getType(const char* procedure, PIActionList list, uint32 index, DescriptorTypeID* type) {
  return call(procedure, [&] { destination(type) = ListItem{list, index}.item(procedure).type; });
}

OSErr getCount(const char* procedure, PIActionList list, uint32* count) {
  return call(procedure, [&] {
    destination(count) = static_cast<uint32>(hostState().lists.at(list, procedure)->entries.size());
  });
}

OSErr putIntegers(const char* procedure, PIActionList list, uint32 count, const int32* values) {
  return call(procedure, [&] {
    const NestedContainer added = integerList(count, values);
    auto& entries = writable(list, procedure).entries;
    entries.insert(entries.end(), added->entries.begin(), added->entries.end());
  });
}

OSErr getIntegers(const char* procedure, PIActionList list, uint32 count, int32* values) {
  return call(procedure, [&] {
    readIntegers(*hostState().lists.at(list, procedure), count, &destination(values));
  });
}

constexpr auto kProcedures =
    joined(std::to_array<Procedure<PSActionListProcs>>({
               row<"ActionList.Make", &PSActionListProcs::Make, make>,
               row<"ActionList.Free", &PSActionListProcs::Free, free>,
               row<"ActionList.GetType", &PSActionListProcs::GetType, getType>,
               row<"ActionList.GetCount", &PSActionListProcs::GetCount, getCount>,
               row<"ActionList.PutIntegers", &PSActionListProcs::PutIntegers, putIntegers>,
               row<"ActionList.GetIntegers", &PSActionListProcs::GetIntegers, getIntegers>,
           }),
           itemProcedures<ListItems>());

}  // namespace
}  // namespace list_suite

constinit const HostSuite<PSActionListProcs> listSuite = suiteOf<list_suite::kProcedures>();

}  // namespace simulator
