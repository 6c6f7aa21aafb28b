// The simulated event manager: events, the main queue and the handlers on the dispatcher target.
#pragma once

#include <Carbon/Carbon.h>

#include <array>
#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "simulator/base/HandleTable.h"
#include "simulator/base/Log.h"
#include "simulator/macos/EventParameters.h"

namespace simulator {

/// The content of an event.
struct EventContent {
  OSType eventClass = 0;
  UInt32 kind = 0;
  EventTime when = 0.0;
  std::vector<EventParameter> parameters;  ///< ordered by when each was first set
};

/// The result of dispatching an event.
struct Dispatched {
  OSStatus status = eventNotHandledErr;
  bool reachedHost = false;  ///< whether it was passed on to the application
};

/// [any-thread] unless marked otherwise. A stale or unknown event is reported as a misuse.
class EventManager {
 public:
  EventManager();

  /// Makes an event with one reference; null if `failCreations` demands it. `when` is in seconds.
  EventRef create(OSType eventClass, UInt32 kind, EventTime when);
  void retain(EventRef event);
  void release(EventRef event);

  /// 0 for an unknown event.
  OSType classOf(EventRef event);
  UInt32 kindOf(EventRef event);
  /// Stores a copy of `bytes` under `name`; replaces a previous value. paramErr for an unknown
  /// event. A misuse for an event that was posted, except on the main thread: the platform does not
  /// let two threads change one event.
  OSStatus setParameter(EventRef event, EventParamName name, EventParamType type,
                        std::span<const std::byte> bytes);
  /// Converts the parameter to the type `wanted` (see `converted`) and copies as many bytes as fit
  /// into `buffer`. Writes the type and the full size in bytes of the converted parameter to `type`
  /// and `size` unless they are null. eventParameterNotFoundErr if there is no such parameter,
  /// -1700 if it cannot be converted.
  OSStatus getParameter(EventRef event, EventParamName name, EventParamType wanted,
                        EventParamType* type, std::span<std::byte> buffer, ByteCount* size);

  EventQueueRef mainQueue();
  /// Queues the event. paramErr for an unknown event, queue or priority; eventAlreadyPostedErr if
  /// the event is in the queue already.
  OSStatus post(EventQueueRef queue, EventRef event, EventPriority priority);

  EventTargetRef dispatcher();
  /// Installs a handler; `ref` may be null. paramErr for an unknown target or a null handler;
  /// eventHandlerAlreadyInstalledErr if the function is installed for one of the types. `*ref` is
  /// null after an error: the platform does not say what it holds then.
  OSStatus install(EventTargetRef target, EventHandlerUPP handler,
                   std::span<const EventTypeSpec> types, void* userData, EventHandlerRef* ref);
  /// Removes a handler; -9868 if it is not installed.
  OSStatus remove(EventHandlerRef ref);
  /// Passes the event to the handlers that follow the running one in `call`. A misuse and paramErr
  /// if no handler with this `call` is running. [main-thread]
  OSStatus callNext(EventHandlerCallRef call, EventRef event);

  /// Sends the event to the dispatcher's handlers, the last installed first, then to the
  /// application if no handler kept it. [main-thread]
  Dispatched dispatch(EventRef event);

  /// Removes the oldest event of the highest priority from the main queue and dispatches it.
  /// Returns false if the queue is empty. [main-thread]
  bool dispatchNext();

  /// Sets the function that receives each event that no handler kept. [main-thread]
  void setApplication(std::function<void(EventRef)> application);

  /// Sets a function that is called, with the event manager's lock held, with the content of each
  /// event that is destroyed. An event that is never posted is visible only here. [main-thread]
  void setObserver(std::function<void(const EventContent&)> observer);

  /// The number of events in the queue, of installed handlers, and of live events.
  std::size_t queued();
  std::size_t installed();
  std::size_t live();

  /// Makes the next `count` creations of events fail.
  void failCreations(int count) { failingCreations_ = count; }

  /// Reports a misuse for each live event.
  void reportLeaks();

 private:
  struct Event : EventContent {
    long references = 1;
    bool queued = false;
    bool posted = false;  ///< whether it was ever queued
  };
  struct Handler {
    EventHandlerRef ref = nullptr;
    EventHandlerUPP function = nullptr;
    void* userData = nullptr;
  };
  struct InstalledHandler : Handler {
    std::vector<EventTypeSpec> types;
  };
  /// One event on its way through the handlers. Handlers removed in the meantime are skipped.
  struct Call {
    std::vector<Handler> handlers;  ///< last installed first
    EventHandlerCallRef ref = nullptr;
    std::size_t next = 0;
    bool reachedHost = false;
  };

  Event* find(EventRef event, const char* procedure);
  OSStatus callFrom(Call& call, EventRef event);
  std::vector<Handler> handlersFor(OSType eventClass, UInt32 kind);
  bool isInstalled(EventHandlerRef ref);
  bool isInstalledForAny(EventHandlerUPP function, std::span<const EventTypeSpec> types) const;
  EventRef takeNext();

  std::mutex mutex_;
  HandleTable<Event> events_;
  std::array<std::deque<EventRef>, 3> queue_;  ///< indexed by priority
  std::vector<InstalledHandler> handlers_;     ///< in order of installation
  std::uintptr_t lastHandler_ = 0;
  HandleTable<Call> calls_;  ///< the running dispatches; main thread only
  std::function<void(EventRef)> application_;
  std::function<void(const EventContent&)> observer_;
  std::atomic<int> failingCreations_{0};
};

/// The event manager of this process. Never destroyed, so static destructors may use it.
/// [any-thread]
EventManager& theEventManager();

}  // namespace simulator
