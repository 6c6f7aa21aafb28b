// The receiver of device events: each sample of device motion does what its dominant motion says.
#include "hostactions/BrushSize.h"
#include "navigate/DeviceEvent.h"
#include "navigate/Dominance.h"
#include "navigate/Navigate2D.h"

namespace {

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

void act(Navigate2D& navigator, const Motion& motion) {
  const Act dominant = dominantAct(motion);
  // Brush steps add up over an unbroken run of twists alone.
  if (dominant != Act::kBrush) ResetBrushSizeAccumulator();
  switch (dominant) {
    case Act::kBrush:
      AdjustBrushSize(motion.rz);
      makeIdleMouseEvent();
      break;
    case Act::kZoom:
      navigator.ZoomEvent(motion.z);
      break;
    case Act::kPan:
      navigator.PanEvent(negated(motion.x), negated(motion.y));
      break;
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
    if (kind == kDeviceAxes) act(*static_cast<Navigate2D*>(userData), readMotion(event));
  } catch (...) {
    // The caller is the platform's dispatcher: the sample is lost, the event still consumed.
  }
  return noErr;
}
