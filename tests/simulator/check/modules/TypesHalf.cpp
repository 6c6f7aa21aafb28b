// Fails "typed-keys": posts the press of a key and never its release.
#include <Carbon/Carbon.h>

#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void*) {
  if (!isStartup(selector)) return 0;
  EventRef event = nullptr;
  CreateEvent(nullptr, kEventClassKeyboard, kEventRawKeyDown, 0.0, 0, &event);
  const UInt32 key = 41;
  SetEventParameter(event, kEventParamKeyCode, typeUInt32, sizeof key, &key);
  PostEventToQueue(GetMainEventQueue(), event, kEventPriorityHigh);
  ReleaseEvent(event);
  return 0;
}
