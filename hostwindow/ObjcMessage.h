// Typed messages to the platform's Objective-C objects.
//
//   static const SEL frame = sel_registerName("frame");
//   const CGRect rect = sendMessage<CGRect>(window, frame);
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <type_traits>

/// Sends `selector` to `receiver` and returns the method's result; zero, also for structures, if
/// the receiver is null. The calling convention of 64-bit Intel returns scalars and structures of
/// up to two doubles in registers, larger structures such as rectangles in memory. [main-thread]
/// REQUIRES: `Result` and `Arguments` are the method's own types.
template <class Result, class... Arguments>
Result sendMessage(id receiver, SEL selector, Arguments... arguments) {
  using Function = Result (*)(id, SEL, Arguments...);
  constexpr bool kInMemory = !std::is_void_v<Result> && !std::is_scalar_v<Result>;
  if constexpr (kInMemory) {
    if (receiver == nullptr) return Result{};
    if constexpr (sizeof(Result) > 2 * sizeof(double)) {
      return reinterpret_cast<Function>(&objc_msgSend_stret)(receiver, selector, arguments...);
    }
  }
  return reinterpret_cast<Function>(&objc_msgSend)(receiver, selector, arguments...);
}
