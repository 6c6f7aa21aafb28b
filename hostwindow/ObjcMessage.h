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
/// the receiver is null. [main-thread]
/// REQUIRES: `Result` and `Arguments` are the method's own types.
template <class Result, class... Arguments>
Result sendMessage(id receiver, SEL selector, Arguments... arguments) {
  using Function = Result (*)(id, SEL, Arguments...);
  constexpr bool kInMemory = !std::is_void_v<Result> && !std::is_scalar_v<Result>;
  if constexpr (kInMemory) {
    if (receiver == nullptr) return Result{};
    // 64-bit Intel returns structures of more than two doubles, such as rectangles, in memory whose
    // address is a hidden first argument; their messages have a function of their own. arm64
    // returns a rectangle in four registers, and has a register of its own for the address of what
    // it returns in memory: there objc_msgSend serves every result, and objc_msgSend_stret does not
    // exist.
#if !defined(__aarch64__)
    if constexpr (sizeof(Result) > 2 * sizeof(double)) {
      return reinterpret_cast<Function>(&objc_msgSend_stret)(receiver, selector, arguments...);
    }
#endif
  }
  return reinterpret_cast<Function>(&objc_msgSend)(receiver, selector, arguments...);
}
