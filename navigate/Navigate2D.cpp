#include "navigate/Navigate2D.h"

#include <ApplicationServices/ApplicationServices.h>

#include <iterator>

#include "device/DeviceEvent.h"
#include "navigate/HostWindow.h"

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
  InstallEventHandler(GetEventDispatcherTarget(), deviceHandler, std::size(kTypes), kTypes, this,
                      &m_deviceHandlerRef);
}

void Navigate2D::InstallMouseDownHandler() {
  if (m_mouseDownHandlerRef != nullptr) return;
  static constexpr EventTypeSpec kTypes[] = {{kEventClassMouse, kEventMouseDown},
                                             {kEventClassMouse, kEventMouseUp}};
  InstallEventHandler(GetEventDispatcherTarget(), mouseDownHandler, std::size(kTypes), kTypes,
                      nullptr, &m_mouseDownHandlerRef);
}

void Navigate2D::RemoveMouseDownHandler() {
  if (m_mouseDownHandlerRef != nullptr) RemoveEventHandler(m_mouseDownHandlerRef);
  m_mouseDownHandlerRef = nullptr;
}
