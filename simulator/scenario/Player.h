// Plays a scenario: sets the machine up, loads the plug-in, takes the steps, and unloads it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "simulator/loader/PluginModule.h"
#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/Scenario.h"

namespace simulator {

/// Told of what the log does not show. All functions are called on the main thread.
struct PlayerObserver {
  virtual ~PlayerObserver() = default;
  /// A device message is about to be delivered; `active`: the host is in front, `pending`: its
  /// window waits to be redrawn.
  virtual void message(const DeviceMessage& message, bool active, bool pending) = 0;
  virtual void redrawn() = 0;
};

/// Plays one scenario in this process, of which the simulated machine is used up by it.
class Player {
 public:
  /// `home` becomes the user's home folder; the host's files are written into it.
  Player(const Scenario& scenario, const TemporaryHome& home, PlayerObserver* observer = nullptr);

  /// Loads the plug-in (and the device framework, where it is there), takes every step and unloads
  /// the plug-in, so that its own last calls are logged, and after them the leaks. Throws what
  /// loading throws, with nothing played.
  void play(const std::string& plugin, const std::string& framework);

 private:
  void setUp(const TemporaryHome& home);
  void take(const Step& step);
  void advanceTo(std::int64_t at);
  void settle();

  void act(const CallStep& step);
  void act(const MessageStep& step);
  void act(const ActiveStep& step);
  void act(const WindowPendingStep& step);
  void act(const ToolbarPendingStep& step);
  void act(const RefreshStep& step);
  void act(const MouseStep& step);
  void act(const ClickStep& step);
  void act(const ModifiersStep& step);
  void act(const ToolStep& step);
  void act(const BrushStep& step);
  void act(const WindowStep& step);
  void act(const LayoutStep& step);
  void act(const FailStep& step);

  const Scenario& scenario_;
  PlayerObserver* observer_;
  std::unique_ptr<PluginModule> plugin_;
  std::int64_t at_ = 0;  ///< of the step under way
  bool active_ = true;
};

/// Runs the main thread's event loop until the device thread and the main loop have nothing left to
/// do. [main-thread]
void runMainLoopUntilIdle();

/// A misuse line for everything that the plug-in was given and never gave back.
void reportAllLeaks();

}  // namespace simulator
