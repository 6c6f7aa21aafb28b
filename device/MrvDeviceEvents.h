// The connection to the device maker's client framework.
//
// An object of this class marks that the connection is up; all state is the class's own and
// outlives it. The framework's messages come in on a thread of the plug-in's own and leave it as
// events on the main queue (DeviceEvent.h).
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>

class MrvDeviceEvents {
 public:
  /// Starts the connection: the receiver of the events first, then the device thread. Does nothing
  /// where the framework is absent. Throws what making the receiver throws. [main-thread]
  MrvDeviceEvents();

  /// Unregisters from the framework. The device thread stays, idle, to the process's end, and the
  /// class keeps its values: a later connection finds the application handler's old reference and
  /// installs none again. [main-thread]
  ~MrvDeviceEvents();

  MrvDeviceEvents(const MrvDeviceEvents&) = delete;
  MrvDeviceEvents& operator=(const MrvDeviceEvents&) = delete;

  /// The device thread: registers with the framework and runs its event loop for ever.
  static OSStatus threadProc(void* parameter);

  /// Installs `applicationEventHandler` unless it ever was. [device-thread]
  static void installEventHandler();

  /// Follows whether the host is in front and passes every event on. [main-thread]
  static OSStatus applicationEventHandler(EventHandlerCallRef nextHandler, EventRef event,
                                          void* userData);

  /// The framework's message callback: filters the message and posts it to the main queue as an
  /// event. Messages of other types or for other clients, and commands that it does not know, post
  /// nothing; while the host is in the background axis values are zero. [device-thread]
  static void messageHandlerProc(std::uint32_t productID, std::uint32_t messageType,
                                 void* messageArgument);

  // Words that the two threads share; see SharedWord.h.
  static std::uint16_t m_clientID;  ///< the framework's id for this client; 0: not registered
  static EventQueueRef m_mainEventQueue;
  static EventHandlerRef m_eventHandler;  ///< the installed `applicationEventHandler`
  static bool m_appIsActive;              ///< whether the host is in front; true at first
};
