// The connection to the device maker's client framework.
//
// The lifetime of an object is the lifetime of the connection. All state is static and outlasts the
// object. The framework delivers its messages on a thread that the plug-in creates; they leave it
// as events on the main queue (navigate/DeviceEvent.h).
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>

class MrvDeviceEvents {
 public:
  /// Starts the connection: creates the receiver of the events (`Navigate2D`), then the device
  /// thread. Does nothing if the framework is absent. Throws what `Navigate2D::Instance` throws.
  /// [main-thread]
  MrvDeviceEvents();

  /// Removes the application handler and unregisters from the framework. The device thread stays
  /// idle until the process ends. The static members keep their values; since `m_eventHandler`
  /// therefore stays set, a later connection installs no application handler. [main-thread]
  ~MrvDeviceEvents();

  MrvDeviceEvents(const MrvDeviceEvents&) = delete;
  MrvDeviceEvents& operator=(const MrvDeviceEvents&) = delete;

  /// The device thread's body: registers with the framework, then runs the thread's event loop
  /// forever. `parameter` is ignored. [device-thread]
  static OSStatus threadProc(void* parameter);

  /// Installs `applicationEventHandler` unless `m_eventHandler` is set. If the platform refuses the
  /// installation, `m_eventHandler` keeps its value. [device-thread]
  static void installEventHandler();

  /// Sets `m_appIsActive` at activation and deactivation of the host. Passes every event on and
  /// returns what the next handler returns. [main-thread]
  static OSStatus applicationEventHandler(EventHandlerCallRef nextHandler, EventRef event,
                                          void* userData);

  /// The framework's message callback: posts a device-state message to the main queue as an event.
  /// Posts nothing for other message types, other clients, unknown commands, or if the event cannot
  /// be created. Axis values are zero while the host is in the background. `productID` is ignored.
  /// [device-thread]
  /// REQUIRES: `messageArgument` points to a `MoravinDeviceState` if `messageType` says so.
  static void messageHandlerProc(std::uint32_t productID, std::uint32_t messageType,
                                 void* messageArgument);

  // Shared by both threads; access them with loadShared and storeShared (SharedWord.h).
  static std::uint16_t m_clientID;  ///< the framework's id for this client, 0 if not registered
  static EventQueueRef m_mainEventQueue;
  static EventHandlerRef m_eventHandler;  ///< the installed `applicationEventHandler`
  static bool m_appIsActive;              ///< whether the host is frontmost; initially true
};
