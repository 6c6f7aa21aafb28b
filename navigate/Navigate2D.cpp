#include "navigate/Navigate2D.h"

#include <ApplicationServices/ApplicationServices.h>

#include <iterator>

#include "hostactions/ZoomPreference.h"
#include "navigate/DeviceEvent.h"

namespace {

constexpr CFTimeInterval kSuppressionSeconds = 0.1;

}  // namespace

Navigate2D& Navigate2D::Instance() {
  static Navigate2D navigator;
  return navigator;
}

Navigate2D::Navigate2D() {
  m_zoomWithScrollWheel = getZoomWithScrollWheel();
  CGSetLocalEventsSuppressionInterval(kSuppressionSeconds);
  CGRegisterScreenRefreshCallback(screenRefreshCallback, this);
  installDeviceHandler();
}

Navigate2D::~Navigate2D() { CGUnregisterScreenRefreshCallback(screenRefreshCallback, this); }

void Navigate2D::installDeviceHandler() {
  static constexpr EventTypeSpec kTypes[] = {{kDeviceEventClass, kDeviceButton},
                                             {kDeviceEventClass, kDeviceAxes},
                                             {kDeviceEventClass, kDeviceCommand}};
  EventHandlerRef handler = nullptr;
  const OSStatus status = InstallEventHandler(GetEventDispatcherTarget(), deviceHandler,
                                              std::size(kTypes), kTypes, this, &handler);
  if (status == noErr) m_deviceHandlerRef = handler;
}

bool Navigate2D::getZoomWithScrollWheel() { return readZoomWithScrollWheel(); }
