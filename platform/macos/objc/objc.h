// Objects and selectors of the message-passing runtime.
#pragma once

using Class = struct objc_class*;
using SEL = struct objc_selector*;
using BOOL = signed char;

struct objc_object {
  Class isa;
};
using id = struct objc_object*;
