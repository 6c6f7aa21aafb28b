// What goes on in the live window, without the window: a person's doings become steps, virtual time
// follows the clock, and what the plug-in does is kept for showing.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "mrvsim/live/Hand.h"
#include "mrvsim/live/Recording.h"
#include "mrvsim/live/Seen.h"
#include "mrvsim/live/Session.h"
#include "simulator/scenario/Scenario.h"

namespace simulator::live {

/// The host and the device as the window's user finds them if no scenario is given: a window that
/// nearly fills the screen, and a host that redraws 16 ms after a tick.
Scenario liveSetup();

/// A sample that was sent, for the strip of time.
struct SentSample {
  std::int64_t at;
  Sample axes;
};

/// Every time is in nanoseconds of one clock, which never goes back. [main-thread]
class Driver {
 public:
  /// `demo`: steps to take at their times, also none; nullopt: there is no demo. `isMeasured`: the
  /// clock is the steady clock, and the time from input to posted event is measured. REQUIRES: the
  /// references outlive the driver.
  Driver(Session& session, Recording& recording, Scenario setup,
         std::optional<std::vector<Step>> demo, bool isMeasured);

  /// Loads the plug-in and, without a demo, calls it with "Startup". REQUIRES: none is loaded.
  void start(std::int64_t now);

  /// Lets time pass: sends the samples that are due, and takes what the plug-in has done meanwhile.
  /// A plug-in that broke is started anew, unless it has broken three times within a second each.
  void advance(std::int64_t now);

  /// Waits until the plug-in has done everything so far.
  void catchUp();

  /// Takes a last step at which the scenario ends, unloads the plug-in and waits for it.
  void finish();

  /// Does something at the present time.
  void take(const StepAction& action);

  /// A person has moved the device or a key at this time; the next sample carries it.
  void noteInput(std::int64_t at);

  /// The device is plugged in or not; if not, it sends nothing, not even that it came to rest.
  void plugIn(bool isPluggedIn) { isPluggedIn_ = isPluggedIn; }
  bool isPluggedIn() const { return isPluggedIn_; }

  /// The framework is there or absent, which takes a new start of the plug-in.
  void setFramework(bool isThere);

  /// Unloads the plug-in and starts it anew.
  void restart();

  Hand& hand() { return hand_; }
  const Seen& seen() const { return seen_; }
  const Scenario& setup() const { return setup_; }
  bool isActive() const { return isActive_; }
  bool isDemo() const { return isDemo_; }
  int starts() const { return starts_; }
  std::int64_t time() const { return time_; }  ///< virtual milliseconds
  const std::deque<SentSample>& samples() const { return samples_; }
  Sample lastSample() const { return lastSample_; }

  /// Where the cap is: the hand's, or the demo's last sample.
  Deflection cap() const;

  double fullDeflection = 200;  ///< counts

  /// Called with each step that is taken.
  std::function<void(const Json& step)> taken = [](const Json&) {};

 private:
  void sampleUntil(std::int64_t time);
  void sendSample(const Sample& sample, std::int64_t at);
  void takeDemoUntil(std::int64_t time);
  void takeAt(const StepAction& action, std::int64_t at, std::int64_t inputTime);
  void remember(const StepAction& action);
  void receive(char kind, std::string_view text);
  void broke();

  Session& session_;
  Recording& recording_;
  Scenario setup_;
  const bool isDemo_;
  const std::vector<Step> demo_;
  const bool isMeasured_;
  std::size_t nextDemoStep_ = 0;
  Hand hand_;
  Seen seen_;
  std::int64_t startedAt_ = 0;   ///< nanoseconds
  std::int64_t now_ = 0;         ///< nanoseconds
  std::int64_t time_ = 0;        ///< virtual milliseconds that the plug-in's process has reached
  std::int64_t nextSample_ = 0;  ///< virtual milliseconds
  std::int64_t inputTime_ = 0;   ///< of the first input that no sample has carried; 0: none
  Sample lastSample_ = {};
  std::deque<SentSample> samples_;
  bool isPluggedIn_ = true;
  bool isActive_ = true;
  bool wantsStart_ = false;
  int starts_ = 0;
  int quickEnds_ = 0;  ///< in a row
};

}  // namespace simulator::live
