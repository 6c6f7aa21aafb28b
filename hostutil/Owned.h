// The one holder of everything that has to be given back: host objects, Core Foundation objects,
// streams.
//
//   Owned<Handle, disposeAlias> alias;
//   sPSActionDescriptor->GetAlias(descriptor, key, alias.out());
//
// Objects declared in one scope are given back in the reverse order of their declarations, so a
// function that must do so in a fixed order declares them backwards.
#pragma once

#include <utility>

/// Owns at most one object of the pointer type `T`, which `release` gives back on every path; null
/// stands for none. Move-only. `release` must not throw. [any-thread] as far as `release` is.
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

  /// Where a call that makes an object stores it; what was owned is given back first.
  T* out() {
    reset();
    return &object_;
  }

  /// The object, null for none; it stays owned.
  T get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  void reset() {
    if (object_ != nullptr) release(std::exchange(object_, nullptr));
  }

  T object_ = nullptr;
};
