// The click filter, which withholds real clicks from the host while a pan is in progress.
#include <iterator>

#include "navigate/Navigate2D.h"
#include "platform/FourCharCode.h"

namespace {

enum : EventParamName { kSynthesizedMarker = fourCharCode("MrVe") };

/// Whether the filter is installed only because the platform refused to remove it.
bool isRemovalRefused = false;

/// Written on the device thread. A plain word that announces no other memory.
bool isRestLost = false;

bool isAtWork() { return !isRemovalRefused && !__atomic_load_n(&isRestLost, __ATOMIC_RELAXED); }

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

void setRestLost(bool lost) { __atomic_store_n(&isRestLost, lost, __ATOMIC_RELAXED); }

OSStatus mouseDownHandler(EventHandlerCallRef nextHandler, EventRef event, void*) {
  if (isClick(event) && !isSynthesized(event) && isAtWork()) return noErr;
  return CallNextEventHandler(nextHandler, event);
}

void Navigate2D::InstallMouseDownHandler() {
  isRemovalRefused = false;
  if (m_mouseDownHandlerRef != nullptr) return;
  static constexpr EventTypeSpec kTypes[] = {{kEventClassMouse, kEventMouseDown},
                                             {kEventClassMouse, kEventMouseUp}};
  EventHandlerRef handler = nullptr;
  const OSStatus status = InstallEventHandler(GetEventDispatcherTarget(), mouseDownHandler,
                                              std::size(kTypes), kTypes, nullptr, &handler);
  if (status == noErr) m_mouseDownHandlerRef = handler;
}

void Navigate2D::RemoveMouseDownHandler() {
  if (m_mouseDownHandlerRef == nullptr) return;
  isRemovalRefused = RemoveEventHandler(m_mouseDownHandlerRef) != noErr;
  if (!isRemovalRefused) m_mouseDownHandlerRef = nullptr;
}
