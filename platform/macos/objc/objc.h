// Objects and selectors of the message-passing runtime.
#pragma once

using Class = struct objc_class*;
using SEL = struct objc_selector*;
#if defined(__aarch64__)
using BOOL = bool;
#else
using BOOL = signed char;
#endif

struct objc_object {
  Class isa;
};
using id = struct objc_object*;
