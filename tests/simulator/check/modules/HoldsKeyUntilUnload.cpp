// Releases the command key only while it is unloaded.
#include <Carbon/Carbon.h>

#include "PlugIn.h"

namespace {

void post(bool down) {
  const CGEventRef event = CGEventCreateKeyboardEvent(nullptr, 55, down);
  CGEventPost(kCGSessionEventTap, event);
  CFRelease(event);
}

struct Releaser {
  ~Releaser() { post(false); }
} releaser;

}  // namespace

ENTRY_POINT(const char*, const char* selector, void*) {
  if (isStartup(selector)) post(true);
  return 0;
}
