// Plays a scenario: sets up the machine, loads the plug-in, takes the steps, unloads the plug-in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "simulator/loader/PluginModule.h"
#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/Scenario.h"

namespace simulator {

/// Receives what the log does not show. All functions are called on the main thread.
struct PlayerObserver {
  virtual ~PlayerObserver() = default;
  /// Called before each step is taken.
  virtual void step() {}
  /// Called before a device message is delivered. `active`: the host is in front; `pending`: its
  /// window waits to be redrawn.
  virtual void message(const DeviceMessage& message, bool active, bool pending) = 0;
  /// Called after redrawn rectangles were reported that overlap the main window's content. As in
  /// the plug-in, their y is compared with the window's as it stands.
  virtual void redrawn() = 0;
};

/// Plays one scenario. It changes the simulated machine of the process, so play one in each
/// process.
class Player {
 public:
  /// `home` becomes the user's home folder; the host's files are written into it. `observer` may be
  /// null. REQUIRES: all arguments outlive the player.
  Player(const Scenario& scenario, const TemporaryHome& home, PlayerObserver* observer = nullptr);

  /// Loads the device framework (if the scenario has it) and the plug-in, takes every step, unloads
  /// the plug-in, which logs its last calls, and then logs leaks. The arguments are files. If
  /// loading throws, the exception is passed on and no step is taken.
  void play(const std::string& plugin, const std::string& framework);

  /// The three parts of `play`, for a caller that has the steps from elsewhere.
  void load(const std::string& plugin, const std::string& framework);
  void take(const Step& step);
  void unload();

  /// Advances virtual time to `at`, in milliseconds, without a step; redraws that fall due by then
  /// happen at their own times. REQUIRES: `at` is not less than the last step's time.
  void advanceTo(std::int64_t at);

  /// If the device moved and none of it reached the plug-in: a line that says so and why. Otherwise
  /// empty.
  std::string lostMotion() const;

 private:
  void setUp();
  void count(const DeviceMessage& message);
  void settle();
  void report(const std::vector<CGRect>& rects);

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
  void act(const CloseWindowStep& step);
  void act(const LayoutStep& step);
  void act(const FailStep& step);
  void act(const RedrawDelayStep& step);
  void act(const PreferenceStep& step);

  const Scenario& scenario_;
  const TemporaryHome& home_;
  PlayerObserver* observer_;
  std::unique_ptr<PluginModule> plugin_;
  std::int64_t at_ = 0;  ///< virtual milliseconds of the current step
  bool active_ = true;
  std::uint64_t motion_ = 0;  ///< samples in which the device is not at rest
  std::uint64_t motionPassedOn_ = 0;
  const char* obstacle_ = nullptr;  ///< what kept the first of them from the plug-in
};

/// Runs the main thread's event loop until neither it nor the device thread has work left.
/// [main-thread]
void runMainLoopUntilIdle();

/// Logs a misuse for every object that the plug-in was given and never released.
void reportAllLeaks();

}  // namespace simulator
