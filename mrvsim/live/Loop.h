// The live window's loop. It takes its time from a clock and its events from a source, so that it
// also runs without a person and without a screen.
#pragma once

#include <SDL.h>

#include <cstdint>

#include "mrvsim/live/Driver.h"
#include "mrvsim/live/Window.h"

namespace simulator::live {

/// [main-thread]
class Clock {
 public:
  virtual ~Clock() = default;

  /// Nanoseconds; more than 0, and never less than before.
  virtual std::int64_t now() = 0;

  /// Returns at this time, or sooner if an event has come.
  virtual void waitUntil(std::int64_t time) = 0;
};

/// The steady clock; waits for SDL's events.
class RealClock : public Clock {
 public:
  std::int64_t now() override;
  void waitUntil(std::int64_t time) override;
};

/// Time that passes only by waiting, and at once.
class SteppedClock : public Clock {
 public:
  std::int64_t now() override { return now_; }
  void waitUntil(std::int64_t time) override;

 private:
  std::int64_t now_ = 1'000'000'000;
};

class EventSource {
 public:
  virtual ~EventSource() = default;

  /// The next event that has come; false if there is none.
  virtual bool next(SDL_Event& event) = 0;
};

/// SDL's own events.
class SystemEvents : public EventSource {
 public:
  bool next(SDL_Event& event) override { return SDL_PollEvent(&event) == 1; }
};

struct LoopLimits {
  std::uint64_t frames = 0;  ///< end after so many pictures; 0: never
  bool inStep = false;       ///< let the plug-in catch up before each picture
};

/// Runs until the window is closed or a limit is reached: 60 pictures a second, a hundred samples.
/// Throws `Interrupted`, and what the driver throws. The plug-in is then still loaded.
void runLoop(Driver& driver, Window& window, Clock& clock, EventSource& events,
             const LoopLimits& limits);

}  // namespace simulator::live
