// The receiver of device events: the dominant motion of a sample selects brush, zoom or pan.
#include <cstdint>

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

/// Creates a mouse-moved event and releases it without posting it. Only 4 of the delta's 16 bytes
/// are set. Nothing is known to depend on the event; kept as releases in the field have it.
void makeIdleMouseEvent() {
  constexpr ByteCount kDeclaredDeltaSize = 4;
  const UInt32 modifiers = 0;
  const CGPoint delta = {0.0, 0.0};
  EventRef event = nullptr;
  const OSStatus status = CreateEvent(nullptr, kEventClassMouse, kEventMouseMoved, 0.0,
                                      kEventAttributeUserEvent, &event);
  if (status != noErr) return;
  SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof modifiers, &modifiers);
  SetEventParameter(event, kEventParamMouseDelta, typeHIPoint, kDeclaredDeltaSize, &delta);
  ReleaseEvent(event);
}

/// −32768 is returned unchanged: its negative does not fit into 16 bits.
short negated(std::int16_t value) { return static_cast<short>(-value); }

void act(Navigate2D& navigator, const Motion& motion) {
  const Act dominant = dominantAct(motion);
  // Only consecutive twists accumulate; any other sample ends the brush gesture.
  if (dominant != Act::kBrush) ResetBrushSizeAccumulator();
  // Branch never true: an act is one of the three, so there is no default.
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

/// Placeholder: reads the button's parameters and ignores them.
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
    // The caller is the platform's dispatcher, which must not see exceptions: drop the sample.
  }
  return noErr;
}
