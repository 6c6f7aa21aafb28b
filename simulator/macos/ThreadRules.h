// The platform's calls that are confined to the main thread.
#pragma once

#include <span>
#include <string_view>

namespace simulator {

/// Whether the calling thread is the main thread: the one that started the process. [any-thread]
bool isMainThread();

/// Reports a misuse if `call`, which the platform confines to the main thread, is made on another
/// thread. Calls in `callsBelievedSafe` are exempt. [any-thread]
void requireMainThread(std::string_view call);

/// A call that is allowed on every thread although the platform's headers mark it "Not thread
/// safe", because the device thread has to make it. That it works there is a belief.
struct CallBelievedSafe {
  std::string_view call;
  std::string_view reason;
};

/// All such calls. [any-thread]
std::span<const CallBelievedSafe> callsBelievedSafe();

}  // namespace simulator
