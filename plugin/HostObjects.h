// Owners of the host's action objects: each frees what it holds, once, on every path.
//
//   ActionReference reference;
//   error = sPSActionReference->Make(reference.out());
//
// Objects declared in one scope are freed in the reverse order of their declarations, so a function
// that must free in a fixed order declares them backwards. [main-thread]
#pragma once

#include <PIActions.h>

#include <utility>

#include "plugin/Suites.h"

/// Holds one `Object` that the procedures behind `Suite` free.
template <class Object, auto& Suite>
class HostObject {
 public:
  HostObject() = default;
  explicit HostObject(Object object) : object_(object) {}
  HostObject(HostObject&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  HostObject& operator=(HostObject&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~HostObject() { free(); }

  /// Where a procedure of the host stores the object that it makes; what was held is freed first.
  Object* out() {
    free();
    return &object_;
  }

  Object get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  /// Runs also while a failed acquisition unwinds the stack, so it must not throw. An object whose
  /// suite the host still refuses cannot be freed by anybody.
  void free() noexcept {
    if (object_ == nullptr) return;
    if (Suite.suite == nullptr) Suite.TryAcquireSuite();
    if (Suite.suite != nullptr) Suite.suite->Free(object_);
    object_ = nullptr;
  }

  Object object_ = nullptr;
};

using ActionDescriptor = HostObject<PIActionDescriptor, sPSActionDescriptor>;
using ActionReference = HostObject<PIActionReference, sPSActionReference>;
using ActionList = HostObject<PIActionList, sPSActionList>;
