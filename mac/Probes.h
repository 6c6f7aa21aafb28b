// Asks the event manager what the plug-in believes about it. [main-thread]
#pragma once

#include <Carbon/Carbon.h>

#include <vector>

#include "mac/Beliefs.h"

namespace mrvmac {

class EventProbes {
 public:
  /// Installs a handler and posts events of its own; the calls' statuses go to `seen`.
  explicit EventProbes(Observations& seen);
  ~EventProbes();
  EventProbes(const EventProbes&) = delete;
  EventProbes& operator=(const EventProbes&) = delete;

  /// Observes what was dispatched since: the main loop must have run in between.
  void report(Observations& seen) const;

 private:
  struct Handled {
    UInt32 kind;
    bool onMain;
  };
  static OSStatus handle(EventHandlerCallRef next, EventRef event, void* self);
  static OSStatus postFromTask(void* queue);
  void install(Observations& seen);
  void post(Observations& seen);

  EventHandlerRef handler_ = nullptr;
  std::vector<Handled> handled_;
};

}  // namespace mrvmac
