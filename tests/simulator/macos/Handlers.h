// Event handlers whose actions a test supplies.
#pragma once

#include <Carbon/Carbon.h>

#include <functional>

#include "simulator/macos/EventManager.h"

namespace testing_support {

inline constexpr OSType kTestClass = fourCharCode("test");

/// A handler's function. Different numbers give different functions, because one function cannot be
/// installed twice for an event.
template <int number>
OSStatus callAction(EventHandlerCallRef call, EventRef event, void* userData) {
  return (*static_cast<std::function<OSStatus(EventHandlerCallRef, EventRef)>*>(userData))(call,
                                                                                           event);
}

/// A handler for events of `kTestClass` and one kind, installed while this object lives.
template <int number>
class Handler {
 public:
  using Action = std::function<OSStatus(EventHandlerCallRef, EventRef)>;

  explicit Handler(Action action, UInt32 kind = 1) : action_(std::move(action)) {
    const EventTypeSpec type = {kTestClass, kind};
    InstallEventHandler(GetEventDispatcherTarget(), callAction<number>, 1, &type, &action_, &ref);
  }
  ~Handler() { RemoveEventHandler(ref); }
  Handler(const Handler&) = delete;
  Handler& operator=(const Handler&) = delete;

  EventHandlerRef ref = nullptr;

 private:
  Action action_;
};

inline EventRef makeEvent(UInt32 kind = 1) {
  EventRef event = nullptr;
  CreateEvent(nullptr, kTestClass, kind, 0.0, kEventAttributeUserEvent, &event);
  return event;
}

/// Dispatches a new event.
inline simulator::Dispatched dispatchNew(UInt32 kind = 1) {
  const EventRef event = makeEvent(kind);
  const simulator::Dispatched dispatched = simulator::theEventManager().dispatch(event);
  ReleaseEvent(event);
  return dispatched;
}

}  // namespace testing_support
