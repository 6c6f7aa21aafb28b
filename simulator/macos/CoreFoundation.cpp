// What all objects of Core Foundation have in common.
#include <CoreFoundation/CoreFoundation.h>

#include "simulator/macos/CFObjects.h"

const CFAllocatorRef kCFAllocatorDefault = nullptr;

void CFRelease(CFTypeRef cf) { simulator::theCFObjects().release(cf); }
