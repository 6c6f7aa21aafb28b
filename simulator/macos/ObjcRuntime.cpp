#include "simulator/macos/ObjcRuntime.h"

#include <fmt/format.h>
#include <objc/runtime.h>

#include <map>
#include <mutex>

#include "simulator/base/Log.h"
#include "simulator/macos/ThreadRules.h"
#include "simulator/macos/WindowServer.h"

namespace simulator {

namespace {

struct Runtime {
  std::mutex mutex;
  std::map<std::string, std::string> selectors;  ///< a selector is the address of a key
  std::map<std::string, objc_class*> classes;
  std::map<Class, objc_class> freed;  ///< for each class, that of its freed objects
};

Runtime& runtime() {
  static Runtime& instance = *new Runtime;
  return instance;
}

}  // namespace

SEL selectorOf(const std::string& name) {
  const std::lock_guard lock(runtime().mutex);
  const auto node = runtime().selectors.try_emplace(name).first;
  return reinterpret_cast<SEL>(const_cast<char*>(node->first.c_str()));
}

void registerClass(objc_class& made) {
  const std::lock_guard lock(runtime().mutex);
  runtime().classes[made.name] = &made;
}

void freeObject(objc_object& object) {
  const std::lock_guard lock(runtime().mutex);
  const objc_class freed = {.isa = nullptr, .name = object.isa->name, .methods = {}, .freed = true};
  object.isa = &runtime().freed.try_emplace(object.isa, freed).first->second;
}

}  // namespace simulator

using namespace simulator;

SEL sel_registerName(const char* str) { return selectorOf(str); }

Class objc_getClass(const char* name) {
  theWindowServer();  // registers its classes when it is first constructed
  const std::lock_guard lock(runtime().mutex);
  const auto found = runtime().classes.find(name);
  return found != runtime().classes.end() ? found->second : nullptr;
}

/// Runs instead of a method that the receiver does not have; returns 0, as a message to null does.
extern "C" void simulatorAnswerNothing();

/// Returns the method of `receiver` for `selector`; called by the trampolines of MessageSend.cpp.
/// All simulated objects are AppKit's, whose messages are for the main thread.
extern "C" void* simulatorFindMethod(id receiver, SEL selector) {
  if (!isMainThread()) {
    requireMainThread(
        fmt::format("[{} {}]", receiver->isa->name, reinterpret_cast<const char*>(selector)));
  }
  for (const objc_class::Method& method : receiver->isa->methods) {
    if (method.selector == selector) return reinterpret_cast<void*>(method.implementation);
  }
  const char* name = reinterpret_cast<const char*>(selector);
  const objc_class& isa = *receiver->isa;
  theLog().misuse(isa.freed ? fmt::format("message '{}' to a freed {}", name, isa.name)
                            : fmt::format("{} does not understand '{}'", isa.name, name));
  return reinterpret_cast<void*>(&simulatorAnswerNothing);
}
