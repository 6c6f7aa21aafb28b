// Messages to the platform's objects, with the result type of the method called.
//
//   static const SEL frame = sel_registerName("frame");
//   const CGRect rect = sendMessage<CGRect>(window, frame);
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <type_traits>

/// Sends `selector` to `receiver` and returns what the method returns: integers and pointers,
/// doubles, and structures of up to two doubles come back in registers; anything larger, such as a
/// rectangle, comes back through memory (the convention of 64-bit Intel). A null receiver answers
/// with zero, also for structures. [main-thread]
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
