// The click filter, which withholds real clicks from the host while a pan is in progress.
#include <iterator>

#include "navigate/Navigate2D.h"
#include "platform/FourCharCode.h"

namespace {

enum : EventParamName { kSynthesizedMarker = fourCharCode("MrVe") };

/// Whether the platform has refused to remove the filter, which then stays for good.
bool isLeftInstalled = false;

/// Whether the filter, left installed, has nothing to hold back.
bool isOff = false;

bool isClick(EventRef event) {
  const UInt32 kind = GetEventKind(event);
  return kind == kEventMouseDown || kind == kEventMouseUp;
}

bool isSynthesized(EventRef event) {
  char marker = 0;
  GetEventParameter(event, kSynthesizedMarker, typeChar, nullptr, sizeof marker, nullptr, &marker);
  return marker == 1;
}

}  // namespace

OSStatus mouseDownHandler(EventHandlerCallRef nextHandler, EventRef event, void*) {
  if (!isOff && isClick(event) && !isSynthesized(event)) return noErr;
  return CallNextEventHandler(nextHandler, event);
}

void Navigate2D::InstallMouseDownHandler() {
  isOff = false;
  if (m_mouseDownHandlerRef != nullptr) return;
  static constexpr EventTypeSpec kTypes[] = {{kEventClassMouse, kEventMouseDown},
                                             {kEventClassMouse, kEventMouseUp}};
  InstallEventHandler(GetEventDispatcherTarget(), mouseDownHandler, std::size(kTypes), kTypes,
                      nullptr, &m_mouseDownHandlerRef);
}

void Navigate2D::RemoveMouseDownHandler() {
  if (m_mouseDownHandlerRef != nullptr && RemoveEventHandler(m_mouseDownHandlerRef) != noErr) {
    isLeftInstalled = true;
  }
  m_mouseDownHandlerRef = nullptr;
  isOff = isLeftInstalled;
}
