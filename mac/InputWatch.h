// Watches the synthesized input of this process as it passes the session's event tap. [main-thread]
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <vector>

#include "mac/Inputs.h"

namespace mrvmac {

/// A wheel event's deltas and modifiers.
Input wheelInput(CGEventRef event);

class InputWatch {
 public:
  /// Installs the tap, which serves the main run loop. `installed` says whether the system allowed
  /// it.
  InputWatch();
  ~InputWatch();
  InputWatch(const InputWatch&) = delete;
  InputWatch& operator=(const InputWatch&) = delete;

  bool installed() const { return tap_ != nullptr; }

  /// Wheels and keys, in their order, and the locations of the wheels.
  const std::vector<Input>& inputs() const { return inputs_; }
  const std::vector<CGPoint>& wheelLocations() const { return wheelLocations_; }

 private:
  static CGEventRef watch(CGEventTapProxy proxy, CGEventType type, CGEventRef event, void* self);
  void add(CGEventType type, CGEventRef event);

  CFMachPortRef tap_ = nullptr;
  CFRunLoopSourceRef source_ = nullptr;
  std::vector<Input> inputs_;
  std::vector<CGPoint> wheelLocations_;
};

}  // namespace mrvmac
