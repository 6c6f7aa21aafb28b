#include "device/DeviceMessages.h"

#include <MoravinClient/MoravinClient.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "device/MrvDeviceEvents.h"
#include "device/SharedWord.h"
#include "navigate/DeviceEvent.h"

std::int16_t axisData[6] = {};
bool gIn3DTool = false;

namespace {

/// The last values relayed. Static, so that they outlast a connection.
struct Remembered {
  std::int16_t lastButtonPressed = 0;
  std::int16_t lastCmdIssued = 0;
};

EventRef createDeviceEvent(UInt32 kind) {
  EventRef event = nullptr;
  const OSStatus status =
      CreateEvent(nullptr, kDeviceEventClass, kind, 0.0, kEventAttributeUserEvent, &event);
  return status == noErr ? event : nullptr;
}

void setShort(EventRef event, EventParamName name, std::int16_t value) {
  SetEventParameter(event, name, typeSInt16, sizeof value, &value);
}

/// The device's release message does not identify the button, so a release event carries the
/// button that was last pressed. A press is remembered only if its event could be created.
EventRef createButtonEvent(const MoravinDeviceState& state, std::int16_t& lastButtonPressed) {
  const EventRef event = createDeviceEvent(kDeviceButton);
  if (event == nullptr) return nullptr;
  const bool pressed = state.value != 0;
  if (pressed) {
    lastButtonPressed = static_cast<std::int16_t>(state.button);
    const UInt32 modifiers = GetCurrentKeyModifiers();
    SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof modifiers, &modifiers);
  }
  setShort(event, kButtonNumber, lastButtonPressed);
  setShort(event, kButtonState, pressed ? 1 : 0);
  return event;
}

EventRef createCommandEvent(const MoravinDeviceState& state, std::int16_t& lastCmdIssued) {
  const EventRef event = createDeviceEvent(kDeviceCommand);
  if (event == nullptr) return nullptr;
  lastCmdIssued = static_cast<std::int16_t>(state.value);
  setShort(event, kCommandNumber, lastCmdIssued);
  return event;
}

/// Swaps the second and third axes of translation and rotation: the device's y points out of the
/// desk, the view's z out of the screen. While the host is in the background every value is zero.
void relayAxes(const MoravinDeviceState& state) {
  static constexpr int kDeviceAxis[6] = {0, 2, 1, 3, 5, 4};
  const bool active = loadShared(MrvDeviceEvents::m_appIsActive);
  std::transform(std::begin(kDeviceAxis), std::end(kDeviceAxis), axisData,
                 [&](int axis) { return active ? state.axis[axis] : std::int16_t{0}; });
}

EventRef createAxesEvent(const MoravinDeviceState& state) {
  static constexpr EventParamName kNames[6] = {kTranslationX, kTranslationY, kTranslationZ,
                                               kRotationX,    kRotationY,    kRotationZ};
  relayAxes(state);
  if (loadShared(gIn3DTool)) return nullptr;
  const EventRef event = createDeviceEvent(kDeviceAxes);
  if (event == nullptr) return nullptr;
  for (int i = 0; i < 6; ++i) setShort(event, kNames[i], axisData[i]);
  return event;
}

EventRef translate(const MoravinDeviceState& state) {
  static Remembered remembered;
  switch (state.command) {
    case kMoravinCommandButtons:
      return createButtonEvent(state, remembered.lastButtonPressed);
    case kMoravinCommandApplication:
      return createCommandEvent(state, remembered.lastCmdIssued);
    case kMoravinCommandAxes:
      return createAxesEvent(state);
    default:
      return nullptr;
  }
}

void post(EventRef event, std::uint64_t deviceTime) {
  SetEventParameter(event, kDeviceTime, typeSInt64, sizeof deviceTime, &deviceTime);
  PostEventToQueue(loadShared(MrvDeviceEvents::m_mainEventQueue), event, kEventPriorityHigh);
  ReleaseEvent(event);
}

}  // namespace

void MrvDeviceEvents::messageHandlerProc(std::uint32_t, std::uint32_t messageType,
                                         void* messageArgument) {
  if (messageType != kMoravinMessageDeviceState) return;
  const auto& state = *static_cast<const MoravinDeviceState*>(messageArgument);
  if (state.client != loadShared(m_clientID)) return;
  const EventRef event = translate(state);
  if (event != nullptr) post(event, state.time);
}
