// Decides what a sample of device motion does: the motion that strictly dominates wins.
#include <algorithm>

#include "device/DeviceEvent.h"
#include "hostactions/BrushSize.h"
#include "navigate/Navigate2D.h"

namespace {

struct Motion {
  std::int16_t x, y, z, rx, ry, rz;
};

std::int16_t readShort(EventRef event, EventParamName name) {
  std::int16_t value = 0;
  GetEventParameter(event, name, typeSInt16, nullptr, sizeof value, nullptr, &value);
  return value;
}

Motion readMotion(EventRef event) {
  return {.x = readShort(event, kTranslationX),
          .y = readShort(event, kTranslationY),
          .z = readShort(event, kTranslationZ),
          .rx = readShort(event, kRotationX),
          .ry = readShort(event, kRotationY),
          .rz = readShort(event, kRotationZ)};
}

int square(std::int16_t value) { return value * value; }

/// Makes a mouse-moved event and drops it unposted. The delta is declared with 4 of its 16 bytes:
/// both are meant so, and nothing else depends on the event.
void makeIdleMouseEvent() {
  constexpr ByteCount kDeclaredDeltaSize = 4;
  const UInt32 modifiers = 0;
  const CGPoint delta = {0.0, 0.0};
  EventRef event = nullptr;
  CreateEvent(nullptr, kEventClassMouse, kEventMouseMoved, 0.0, kEventAttributeUserEvent, &event);
  SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof modifiers, &modifiers);
  SetEventParameter(event, kEventParamMouseDelta, typeHIPoint, kDeclaredDeltaSize, &delta);
  if (event != nullptr) ReleaseEvent(event);
}

/// −32768 has no positive counterpart in 16 bits and stays itself.
short negated(std::int16_t value) { return static_cast<short>(-value); }

void route(Navigate2D& navigator, const Motion& motion) {
  const int zoom = square(motion.z);
  const int twist = square(motion.rz);
  const int pan = std::max(square(motion.x), square(motion.y));
  if (twist > zoom && twist > pan) {
    AdjustBrushSize(motion.rz);
    makeIdleMouseEvent();
    return;
  }
  // Brush steps add up over an unbroken run of twists alone.
  ResetBrushSizeAccumulator();
  if (zoom > twist && zoom > pan) {
    navigator.ZoomEvent(motion.z);
  } else {
    navigator.PanEvent(negated(motion.x), negated(motion.y));
  }
}

/// Buttons are read and nothing more is done with them.
void readButton(EventRef event) {
  readShort(event, kButtonNumber);
  readShort(event, kButtonState);
}

}  // namespace

OSStatus deviceHandler(EventHandlerCallRef, EventRef event, void* userData) {
  try {
    const UInt32 kind = GetEventKind(event);
    if (kind == kDeviceButton) readButton(event);
    if (kind == kDeviceAxes) route(*static_cast<Navigate2D*>(userData), readMotion(event));
  } catch (...) {
    // The caller is the platform's dispatcher: the sample is lost, the event still consumed.
  }
  return noErr;
}
