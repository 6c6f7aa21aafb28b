#include "simulator/macos/CFObjects.h"

#include <fmt/format.h>

#include <array>

#include "simulator/Log.h"

namespace simulator {

namespace {

const char* nameOf(const CFObjects::Value& value) {
  static constexpr std::array<const char*, 5> kNames = {"string", "URL", "data", "input source",
                                                        "synthesized event"};
  return kNames[value.index()];
}

}  // namespace

CFTypeRef CFObjects::make(Value value) {
  const std::lock_guard lock(mutex_);
  return objects_.insert({std::move(value), 1});
}

void CFObjects::retain(CFTypeRef handle) {
  const std::lock_guard lock(mutex_);
  Object* object = objects_.find(handle);
  if (object == nullptr) return reportWrongUse(handle, "CFRetain");
  ++object->references;
}

void CFObjects::release(CFTypeRef handle) {
  CFTypeRef owned = nullptr;
  {
    const std::lock_guard lock(mutex_);
    Object* object = objects_.find(handle);
    if (object == nullptr) return reportWrongUse(handle, "CFRelease");
    if (--object->references > 0) return;
    if (const auto* source = std::get_if<InputSource>(&object->value)) owned = source->identifier;
    objects_.erase(handle);
  }
  if (owned != nullptr) release(owned);
}

std::size_t CFObjects::live() {
  const std::lock_guard lock(mutex_);
  return objects_.live();
}

void CFObjects::reportLeaks() {
  const std::lock_guard lock(mutex_);
  objects_.forEach([](const Object& object) {
    theLog().misuse(fmt::format("a {} was leaked", nameOf(object.value)));
  });
}

void CFObjects::reportWrongUse(CFTypeRef handle, const char* procedure) {
  theLog().misuse(fmt::format("{}: {} is no such object, or was released", procedure, handle));
}

CFObjects& theCFObjects() {
  static CFObjects& objects = *new CFObjects;
  return objects;
}

CFStringRef makeCFString(std::string utf8) {
  return static_cast<CFStringRef>(theCFObjects().make(CFText{std::move(utf8)}));
}

}  // namespace simulator
