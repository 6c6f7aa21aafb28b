// The two functions of Foundation in use. They are plain C functions, but the headers that declare
// them can be read in Objective-C alone; the object types below are bridged to Foundation's own.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/objc.h>

inline constexpr unsigned long NSDesktopDirectory = 12;
inline constexpr unsigned long NSUserDomainMask = 1;

extern "C" {

/// Writes a line to the system log. `format` is as for printf. [any-thread]
void NSLog(CFStringRef format, ...);

/// The paths, as strings, of a standard folder in the domains of the mask; with `expandTilde` they
/// begin with the home folder in full. The array is lent, not handed over. [any-thread]
CFArrayRef NSSearchPathForDirectoriesInDomains(unsigned long directory, unsigned long domainMask,
                                               BOOL expandTilde);
}
