#include "simulator/macos/ThreadRules.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "simulator/base/Log.h"

namespace simulator {

namespace {

// The most frequent one first.
constexpr std::array kCallsBelievedSafe = {
    CallBelievedSafe{"SetEventParameter",
                     "the header lets each thread fill an event of its own; an event that was "
                     "posted is another thread's as well"},
    CallBelievedSafe{"GetEventDispatcherTarget",
                     "returns the one target of the process, which exists before any plug-in runs"},
    CallBelievedSafe{"InstallEventHandler",
                     "the device thread installs the handler that follows the host's activation, "
                     "once in the process; the handler itself runs on the main thread"},
    CallBelievedSafe{"GetCurrentKeyModifiers",
                     "asks the window server for the keyboard's state and changes nothing"},
};

}  // namespace

bool isMainThread() {
  // Cached, because every call of the event manager asks.
  thread_local const bool isMain = getpid() == gettid();
  return isMain;
}

void requireMainThread(std::string_view call) {
  if (isMainThread()) return;
  const bool believedSafe =
      std::any_of(kCallsBelievedSafe.begin(), kCallsBelievedSafe.end(),
                  [&](const CallBelievedSafe& exempt) { return exempt.call == call; });
  if (believedSafe) return;
  theLog().misuse(fmt::format("{}: called on another thread than the main one", call));
}

std::span<const CallBelievedSafe> callsBelievedSafe() { return kCallsBelievedSafe; }

}  // namespace simulator
