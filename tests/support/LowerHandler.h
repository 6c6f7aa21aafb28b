// A handler below the plug-in's own, which shows what they pass on.
#pragma once

#include <Carbon/Carbon.h>
#include <gtest/gtest.h>

#include <vector>

#include "simulator/macos/EventManager.h"

namespace testing_support {

/// Takes every event of `types` that the handlers installed after it pass on.
class LowerHandler {
 public:
  /// What it returns; nothing else does.
  static constexpr OSStatus kStatus = -31415;

  explicit LowerHandler(const std::vector<EventTypeSpec>& types) {
    EXPECT_EQ(
        simulator::theEventManager().install(GetEventDispatcherTarget(), take, types, this, &ref_),
        noErr);
  }
  ~LowerHandler() { RemoveEventHandler(ref_); }
  LowerHandler(const LowerHandler&) = delete;
  LowerHandler& operator=(const LowerHandler&) = delete;

  /// Whether a dispatched event reached this handler. If it did, its status must have reached the
  /// dispatcher; if it did not, the event must have ended with noErr. Releases the event.
  bool receives(EventRef event) {
    const int before = taken_;
    const simulator::Dispatched dispatched = simulator::theEventManager().dispatch(event);
    simulator::theEventManager().release(event);
    const bool received = taken_ > before;
    EXPECT_EQ(dispatched.status, received ? kStatus : OSStatus{noErr});
    EXPECT_FALSE(dispatched.reachedHost);
    return received;
  }

  bool receives(OSType eventClass, UInt32 kind) {
    return receives(simulator::theEventManager().create(eventClass, kind, 0.0));
  }

 private:
  static OSStatus take(EventHandlerCallRef, EventRef, void* self) {
    ++static_cast<LowerHandler*>(self)->taken_;
    return kStatus;
  }

  EventHandlerRef ref_ = nullptr;
  int taken_ = 0;
};

}  // namespace testing_support
