// The reference-counted objects of the simulated Mac: strings, URLs, data, arrays, input sources
// and synthesized events. [any-thread]
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "simulator/base/HandleTable.h"

namespace simulator {

struct CFText {
  std::u16string units;  ///< not necessarily well-formed
};

/// The URL of a file or folder.
struct CFUrl {
  std::string path;  ///< ends with a slash if it is the path of a folder
  std::string base;  ///< the folder, with a slash, from which a relative path starts; or empty
  bool isDirectory = false;
};

struct CFBytes {
  std::vector<std::uint8_t> bytes;
};

struct CFList {
  std::vector<CFTypeRef> values;  ///< constant objects, which need no release
};

struct InputSource {
  CFStringRef identifier = nullptr;  ///< owned by the source
};

struct KeyboardEvent {
  CGKeyCode key = 0;
  bool down = false;
};

struct WheelEvent {
  CGScrollEventUnit units = 0;
  std::vector<std::int32_t> wheels;
};

struct SynthesizedEvent {
  std::variant<KeyboardEvent, WheelEvent> input;
  CGEventType type = 0;
  CGEventFlags flags = 0;
  CGPoint location = {0.0, 0.0};
};

/// All objects of the process. A handle that is stale, was never issued or has the wrong type is
/// reported as a misuse by `procedure`.
class CFObjects {
 public:
  using Value = std::variant<CFText, CFUrl, CFBytes, CFList, InputSource, SynthesizedEvent>;

  /// Makes an object with one reference.
  CFTypeRef make(Value value);

  /// Makes an object that lives as long as the process; releasing it has no effect.
  CFTypeRef makeConstant(Value value);

  /// A copy of the object's value; nullopt, with a misuse, if it is not a live `T`.
  template <class T>
  std::optional<T> get(CFTypeRef object, const char* procedure) {
    const std::lock_guard lock(mutex_);
    T* value = find<T>(object, procedure);
    return value != nullptr ? std::optional<T>(*value) : std::nullopt;
  }

  /// Calls `change` with the object's value, holding the table's lock. Reports a misuse instead if
  /// it is not a live `T`.
  template <class T, class Change>
  void change(CFTypeRef object, const char* procedure, Change change) {
    const std::lock_guard lock(mutex_);
    if (T* value = find<T>(object, procedure)) change(*value);
  }

  void retain(CFTypeRef object);
  void release(CFTypeRef object);

  /// The number of live objects, not counting constants.
  std::size_t live();

  /// Reports a misuse for each live object that is not a constant.
  void reportLeaks();

 private:
  struct Object {
    Value value;
    long references = 1;
    bool constant = false;
  };

  template <class T>
  T* find(CFTypeRef handle, const char* procedure) {
    Object* object = objects_.find(handle);
    T* value = object != nullptr ? std::get_if<T>(&object->value) : nullptr;
    if (value == nullptr) reportWrongUse(handle, procedure);
    return value;
  }
  void reportWrongUse(CFTypeRef handle, const char* procedure);

  std::mutex mutex_;
  HandleTable<Object> objects_;
  std::size_t constants_ = 0;
};

/// The objects of this process. Never destroyed, so static destructors may use them.
CFObjects& theCFObjects();

/// Makes a string with one reference, which the caller releases.
CFStringRef makeCFString(const std::string& utf8);

/// A constant string; equal texts give the same object.
CFStringRef constantCFString(const std::string& utf8);

}  // namespace simulator
