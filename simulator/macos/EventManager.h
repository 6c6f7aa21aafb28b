// The simulated event manager: events, the main queue and the handlers on the dispatcher target.
#pragma once

#include <Carbon/Carbon.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "simulator/base/HandleTable.h"
#include "simulator/base/Log.h"

namespace simulator {

/// The bytes of a parameter: the usual few without an allocation of their own.
class ParameterBytes {
 public:
  ParameterBytes() = default;
  explicit ParameterBytes(std::span<const std::byte> bytes);
  std::span<const std::byte> view() const;

 private:
  std::array<std::byte, 16> small_{};
  std::vector<std::byte> large_;
  std::size_t size_ = 0;
};

struct EventParameter {
  EventParamName name = 0;
  EventParamType type = 0;
  ParameterBytes bytes;
};

/// What an event says.
struct EventContent {
  OSType eventClass = 0;
  UInt32 kind = 0;
  EventTime when = 0.0;
  std::vector<EventParameter> parameters;  ///< in the order in which they were first set
};

/// What dispatching an event came to.
struct Dispatched {
  OSStatus status = eventNotHandledErr;
  bool reachedHost = false;  ///< no handler kept it from the application
};

/// Everything may be called from any thread, except that events are dispatched on the main one.
class EventManager {
 public:
  EventManager();

  EventRef create(OSType eventClass, UInt32 kind, EventTime when);
  void retain(EventRef event);
  void release(EventRef event);

  OSType classOf(EventRef event);
  UInt32 kindOf(EventRef event);
  OSStatus setParameter(EventRef event, EventParamName name, EventParamType type,
                        std::span<const std::byte> bytes);
  /// Copies what fits into `buffer`; the parameter's type and full size are told where wanted.
  OSStatus getParameter(EventRef event, EventParamName name, EventParamType wanted,
                        EventParamType* type, std::span<std::byte> buffer, ByteCount* size);

  EventQueueRef mainQueue();
  OSStatus post(EventQueueRef queue, EventRef event, EventPriority priority);

  EventTargetRef dispatcher();
  OSStatus install(EventTargetRef target, EventHandlerUPP handler,
                   std::span<const EventTypeSpec> types, void* userData, EventHandlerRef* ref);
  OSStatus remove(EventHandlerRef ref);
  OSStatus callNext(EventHandlerCallRef call, EventRef event);

  /// Sends the event to the dispatcher's handlers, and to the application where they let it pass.
  /// [main-thread]
  Dispatched dispatch(EventRef event);

  /// Takes the first event of the highest priority off the main queue and dispatches it; false
  /// where the queue is empty. [main-thread]
  bool dispatchNext();

  /// What the application does with an event that no handler kept from it. [main-thread]
  void setApplication(std::function<void(EventRef)> application);

  /// Calls `observer` with the content of each event that goes, under the event manager's lock: an
  /// event that was made and never posted shows here alone. [main-thread]
  void setObserver(std::function<void(const EventContent&)> observer);

  std::size_t queued();
  std::size_t installed();
  std::size_t live();

  /// Makes the next `count` creations of events fail.
  void failCreations(int count) { failingCreations_ = count; }

  /// A misuse line for every event that is still alive.
  void reportLeaks();

 private:
  struct Event : EventContent {
    long references = 1;
    bool queued = false;
  };
  struct Handler {
    EventHandlerRef ref = nullptr;
    EventHandlerUPP function = nullptr;
    std::vector<EventTypeSpec> types;
    void* userData = nullptr;
  };
  /// The way of one event down the handlers. Handlers that go while it is under way are skipped.
  struct Call {
    std::vector<Handler> handlers;  ///< last installed first
    std::size_t next = 0;
    bool reachedHost = false;
  };

  Event* find(EventRef event, const char* procedure);
  OSStatus callFrom(Call& call, EventRef event);
  std::vector<Handler> handlersFor(OSType eventClass, UInt32 kind);
  bool isInstalled(EventHandlerRef ref);
  EventRef takeNext();
  Json parametersAsJson(const Event& event);
  void logPosted(const Event& event, EventPriority priority);

  std::mutex mutex_;
  HandleTable<Event> events_;
  std::array<std::deque<EventRef>, 3> queue_;  ///< by priority
  std::vector<Handler> handlers_;              ///< in the order of installation
  std::uintptr_t lastHandler_ = 0;
  std::function<void(EventRef)> application_;
  std::function<void(const EventContent&)> observer_;
  std::atomic<int> failingCreations_{0};
};

/// The event manager of the process; it outlives every static object.
EventManager& theEventManager();

}  // namespace simulator
