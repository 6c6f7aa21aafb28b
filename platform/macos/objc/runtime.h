// Names of classes and selectors. [any-thread]
#pragma once

#include <objc/objc.h>

extern "C" {

/// The class of that name as an object, null where there is none.
Class objc_getClass(const char* name);

/// The selector of that name, the same one at each call.
SEL sel_registerName(const char* str);
}
