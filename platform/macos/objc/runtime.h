// Classes and selectors by name. [not documented as safe]
#pragma once

#include <objc/objc.h>

extern "C" {

/// The class called `name`, which is also an object; null if there is none.
Class objc_getClass(const char* name);

/// The selector called `str`; equal names give the same selector.
SEL sel_registerName(const char* str);
}
