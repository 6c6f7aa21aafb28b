// The window's connection to the plug-in's process. Nothing here waits unless it says so.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "mrvsim/live/PluginProcess.h"
#include "simulator/base/Json.h"

namespace simulator::live {

/// Sends orders and receives messages. [main-thread]
class Session {
 public:
  using Receiver = std::function<void(char kind, std::string_view text)>;

  /// See `PluginProcess`.
  Session(const PluginFiles& files, double timeout) : process_(files, timeout) {}

  /// Loads the plug-in with this set-up, a scenario without steps. REQUIRES: none is loaded, or it
  /// has ended.
  void start(const Json& setup);

  /// Takes a step. `inputTime`: when a person caused it, in nanoseconds of the steady clock; 0 if
  /// that is not to be measured.
  void take(const Json& step, std::int64_t inputTime);

  /// Lets virtual time reach so many milliseconds.
  void reach(std::int64_t milliseconds);

  /// Unloads the plug-in; `message::kEnded` follows.
  void finish();

  /// Sends what could not be sent before, and passes on the messages that have come. Throws
  /// `std::runtime_error` if the plug-in's process cannot play at all.
  void exchange(const Receiver& receive);

  /// The same until everything that was ordered has been done, or the plug-in has ended. Waits, but
  /// no longer than a plug-in may take.
  void catchUp(const Receiver& receive);

  /// The same until the plug-in has ended.
  void waitForEnd(const Receiver& receive);

  /// Whether a plug-in was started and has not ended.
  bool isOpen() const { return isOpen_; }

 private:
  void order(std::string_view text);
  void sendSome();
  bool receiveSome(const Receiver& receive);
  void deliver(const Receiver& receive);
  void waitForMessages() const;

  PluginProcess process_;
  bool isOpen_ = false;
  std::uint64_t asked_ = 0, answered_ = 0;
  std::string outgoing_;
  std::string incoming_;
};

}  // namespace simulator::live
