// Fails "keys-released": presses the option key and never releases it.
#include <Carbon/Carbon.h>

#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void*) {
  if (!isStartup(selector)) return 0;
  const CGEventRef press = CGEventCreateKeyboardEvent(nullptr, 58, true);
  CGEventPost(kCGSessionEventTap, press);
  CFRelease(press);
  return 0;
}
