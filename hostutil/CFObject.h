// The owner of one reference to a Core Foundation object. [any-thread]
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

/// Releases the object that it was made with; null is allowed and released never.
template <class Ref>
class CFObject {
 public:
  explicit CFObject(Ref object) : object_(object) {}
  CFObject(CFObject&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  CFObject& operator=(CFObject&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~CFObject() {
    if (object_ != nullptr) CFRelease(object_);
  }

  Ref get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Ref object_;
};
