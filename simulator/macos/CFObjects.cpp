#include "simulator/macos/CFObjects.h"

#include <fmt/format.h>

#include <array>
#include <map>

#include "simulator/base/Log.h"
#include "simulator/base/Text.h"

namespace simulator {

namespace {

const char* nameOf(const CFObjects::Value& value) {
  static constexpr std::array<const char*, 6> kNames = {
      "string", "URL", "data", "array", "input source", "synthesized event"};
  return kNames[value.index()];
}

}  // namespace

CFTypeRef CFObjects::make(Value value) {
  const std::lock_guard lock(mutex_);
  return objects_.insert({std::move(value)});
}

CFTypeRef CFObjects::makeConstant(Value value) {
  const std::lock_guard lock(mutex_);
  ++constants_;
  return objects_.insert({.value = std::move(value), .constant = true});
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
    if (object->constant || --object->references > 0) return;
    if (const auto* source = std::get_if<InputSource>(&object->value)) owned = source->identifier;
    objects_.erase(handle);
  }
  if (owned != nullptr) release(owned);
}

std::size_t CFObjects::live() {
  const std::lock_guard lock(mutex_);
  return objects_.live() - constants_;
}

void CFObjects::reportLeaks() {
  const std::lock_guard lock(mutex_);
  objects_.forEach([](const Object& object) {
    if (object.constant) return;
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

CFStringRef makeCFString(const std::string& utf8) {
  return static_cast<CFStringRef>(theCFObjects().make(CFText{utf16From(utf8)}));
}

CFStringRef constantCFString(const std::string& utf8) {
  static std::mutex mutex;
  static auto& constants = *new std::map<std::string, CFTypeRef>;
  const std::lock_guard lock(mutex);
  CFTypeRef& constant = constants[utf8];
  if (constant == nullptr) constant = theCFObjects().makeConstant(CFText{utf16From(utf8)});
  return static_cast<CFStringRef>(constant);
}

}  // namespace simulator
