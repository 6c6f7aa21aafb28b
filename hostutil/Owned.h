// Owner of objects that must be released: host objects, Core Foundation objects, streams.
//
//   Owned<Handle, disposeAlias> alias;
//   sPSActionDescriptor->GetAlias(descriptor, key, alias.out());
//
// Objects in one scope are released in the reverse order of their declarations, so a function that
// must release them in a fixed order declares them backwards.
#pragma once

#include <utility>

/// Owns at most one object of the pointer type `T` and releases it with `release` on every path;
/// null if it owns none. Move-only. `release` must not throw. [any-thread] if `release` is.
template <class T, auto release>
class Owned {
 public:
  Owned() = default;
  explicit Owned(T object) : object_(object) {}
  Owned(Owned&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Owned() { reset(); }

  /// The address at which a call stores a new object to own; releases the current object first.
  T* out() {
    reset();
    return &object_;
  }

  /// The object, which remains owned; null if there is none.
  T get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  void reset() {
    if (object_ != nullptr) release(std::exchange(object_, nullptr));
  }

  T object_ = nullptr;
};
