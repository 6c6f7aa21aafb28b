#include "device/MrvDeviceEvents.h"

#include <MoravinClient/MoravinClient.h>
#include <PITypes.h>

#include <cstdint>
#include <iterator>

#include "device/SharedWord.h"
#include "navigate/Navigate2D.h"

std::uint16_t MrvDeviceEvents::m_clientID = 0;
EventQueueRef MrvDeviceEvents::m_mainEventQueue = nullptr;
EventHandlerRef MrvDeviceEvents::m_eventHandler = nullptr;
bool MrvDeviceEvents::m_appIsActive = true;

namespace {

constexpr ByteCount kDeviceThreadStack = 512000;
constexpr std::uint32_t kClientMode = 1;
constexpr std::uint32_t kClientMask = 0x3F00;
constexpr EventTimeout kForever = -1.0;

/// The thread runs until the process ends, so its id is not kept.
void startDeviceThread() {
  MPTaskID task = nullptr;
  MPCreateTask(MrvDeviceEvents::threadProc, nullptr, kDeviceThreadStack, nullptr, nullptr, nullptr,
               0, &task);
}

}  // namespace

MrvDeviceEvents::MrvDeviceEvents() {
  if (InstallMoravinHandlers == nullptr) return;
  storeShared(m_mainEventQueue, GetMainEventQueue());
  // Installs the receiver of device events, before the device thread can post any.
  Navigate2D::Instance();
  startDeviceThread();
}

MrvDeviceEvents::~MrvDeviceEvents() {
  if (UnregisterMoravinClient == nullptr) return;
  const EventHandlerRef handler = loadShared(m_eventHandler);
  if (handler != nullptr) RemoveEventHandler(handler);
  const std::uint16_t client = loadShared(m_clientID);
  if (client != 0) UnregisterMoravinClient(client);
  CleanupMoravinHandlers();
}

OSStatus MrvDeviceEvents::threadProc(void*) {
  if (InstallMoravinHandlers(messageHandlerProc, nullptr, nullptr) == 0) {
    storeShared(m_clientID,
                RegisterMoravinClient(kPhotoshopSignature, nullptr, kClientMode, kClientMask));
  }
  installEventHandler();
  RunCurrentEventLoop(kForever);
  return 0;
}

void MrvDeviceEvents::installEventHandler() {
  if (loadShared(m_eventHandler) != nullptr) return;
  static constexpr EventTypeSpec kTypes[] = {{kEventClassApplication, kEventAppDeactivated},
                                             {kEventClassApplication, kEventAppActivated}};
  EventHandlerRef handler = nullptr;
  const OSStatus status = InstallEventHandler(GetEventDispatcherTarget(), applicationEventHandler,
                                              std::size(kTypes), kTypes, nullptr, &handler);
  // The platform refuses a second installation. The reference may then have been stored by another
  // device thread, which started at the same time.
  if (status == noErr) storeShared(m_eventHandler, handler);
}

OSStatus MrvDeviceEvents::applicationEventHandler(EventHandlerCallRef nextHandler, EventRef event,
                                                  void*) {
  if (GetEventClass(event) == kEventClassApplication) {
    const UInt32 kind = GetEventKind(event);
    if (kind == kEventAppActivated) storeShared(m_appIsActive, true);
    if (kind == kEventAppDeactivated) storeShared(m_appIsActive, false);
  }
  return CallNextEventHandler(nextHandler, event);
}
