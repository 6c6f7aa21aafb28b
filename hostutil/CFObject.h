// The owner of one reference to a Core Foundation object. [any-thread]
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include "hostutil/Owned.h"

template <class Ref>
using CFObject = Owned<Ref, CFRelease>;
