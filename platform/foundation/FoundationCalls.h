// The two functions of Foundation that the plug-in calls. They are plain C functions, but
// Foundation's headers compile only as Objective-C. The CF types here are bridged to theirs.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/objc.h>

inline constexpr unsigned long NSDesktopDirectory = 12;
inline constexpr unsigned long NSUserDomainMask = 1;

extern "C" {

/// Writes a line to the system log. `format` has printf's directives. [not documented as safe]
void NSLog(CFStringRef format, ...);

/// The paths (CFStringRef) of the standard folder `directory` in the domains of `domainMask`; empty
/// if there are none. With `expandTilde` a path starts with the full home folder, otherwise with
/// "~". The caller does not own the array and must not release it. [not documented as safe]
CFArrayRef NSSearchPathForDirectoriesInDomains(unsigned long directory, unsigned long domainMask,
                                               BOOL expandTilde);
}
