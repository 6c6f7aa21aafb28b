// The plug-in's side of the live window: a process that is started before the window opens, and
// plays what the window sends.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <string>

#include "simulator/scenario/InputFile.h"

namespace simulator::live {

/// What the window sends: one order a line, the kind, a blank and the rest.
namespace order {
constexpr char kStart = 'N';     ///< load the plug-in; a scenario without steps
constexpr char kTakeStep = 'S';  ///< input time in nanoseconds, 0 if unknown; kind; the step
constexpr char kReach = 'T';     ///< virtual time in milliseconds
constexpr char kAnswer = 'B';    ///< a number to send back
constexpr char kFinish = 'Q';    ///< unload the plug-in
}  // namespace order

/// What the window receives: messages of a kind, a length of four bytes, and so many bytes.
namespace message {
constexpr char kWasLoaded = 'l';
constexpr char kLogged = 'L';     ///< a line of the log
constexpr char kDelay = 'D';      ///< nanoseconds from the input to the posted event
constexpr char kHostState = 'H';  ///< a `HostState`
constexpr char kAnswered = 'b';   ///< the number
constexpr char kEnded = 'e';      ///< the plug-in's process has ended; empty: as it was told to
constexpr char kFailed = 'E';     ///< no plug-in can be played at all, and why
}  // namespace message

/// What the window shows of the host and the plug-in; it is sent as its bytes.
struct HostState {
  double zoom = 1;
  CGPoint origin = {0, 0};
  double brush = -1;  ///< negative: the tool has none
  CGRect frame = {};  ///< the window's
  CGRect content = {};
  bool hasWindow = false;    ///< whether there is a main window
  bool isPending = false;    ///< whether the window waits to be redrawn
  bool isConnected = false;  ///< whether the plug-in receives messages of the device
  std::int32_t zoomCounts = 0, panPixels = 0, brushCounts = 0;  ///< see `Gauges`
  std::int32_t wait = 0;
};

struct PluginFiles {
  std::string plugin;     ///< a module or a bundle
  std::string framework;  ///< the device framework's module
};

/// Starts a process that reads orders and sends messages until the orders end. It plays each
/// plug-in in a child of its own, which may crash, and ends it if a step takes longer than
/// `timeout` seconds. Throws `std::runtime_error` if the system refuses. REQUIRES: this process has
/// one thread.
class PluginProcess {
 public:
  PluginProcess(const PluginFiles& files, double timeout);

  /// Ends the orders and waits for the process's end.
  ~PluginProcess();
  PluginProcess(const PluginProcess&) = delete;
  PluginProcess& operator=(const PluginProcess&) = delete;

  OpenFile orders;    ///< the end to write orders to; does not block
  OpenFile messages;  ///< the end to read messages from; does not block

 private:
  int process_ = 0;
};

}  // namespace simulator::live
