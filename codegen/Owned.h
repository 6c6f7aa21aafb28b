// A holder that gives one object back on every path.
#pragma once

#include <utility>

/// Owns at most one object of the pointer type `T`, which `release` gives back. Move-only.
///
///   Owned<Handle, DisposeAlias> alias;
///   sPSActionDescriptor->GetAlias(descriptor, key, alias.receive());
template <class T, auto release>
class Owned {
 public:
  Owned() = default;
  Owned(Owned&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Owned() {
    if (object_ != nullptr) release(object_);
  }

  /// The object, null where there is none; it stays owned.
  T get() const { return object_; }

  /// Where a call that makes an object stores it. REQUIRES: nothing is owned yet.
  T* receive() { return &object_; }

  explicit operator bool() const { return object_ != nullptr; }

 private:
  T object_ = nullptr;
};
