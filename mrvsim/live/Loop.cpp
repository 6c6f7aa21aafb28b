#include "mrvsim/live/Loop.h"

#include <algorithm>
#include <chrono>

#include "simulator/scenario/Interrupts.h"

namespace simulator::live {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::int64_t kFrameInterval = kSecond / 60;
constexpr std::int64_t kSampleInterval = kSecond / 100;
constexpr std::int64_t kMillisecond = 1'000'000;

}  // namespace

std::int64_t RealClock::now() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

void RealClock::waitUntil(std::int64_t time) {
  const std::int64_t left = time - now();
  // SDL counts in whole milliseconds.
  if (left > 0)
    SDL_WaitEventTimeout(nullptr, static_cast<int>((left + kMillisecond - 1) / kMillisecond));
}

void SteppedClock::waitUntil(std::int64_t time) { now_ = std::max(now_, time); }

void runLoop(Driver& driver, Window& window, Clock& clock, EventSource& events,
             const LoopLimits& limits) {
  std::uint64_t frames = 0;
  std::int64_t nextFrame = clock.now();
  std::int64_t nextSample = clock.now();
  while (!window.isClosed() && (limits.frames == 0 || frames < limits.frames)) {
    throwIfInterrupted();
    SDL_Event event;
    while (events.next(event)) window.take(event, clock.now());
    window.passMouse();
    driver.advance(clock.now());
    const std::int64_t now = clock.now();
    if (now >= nextFrame) {
      if (limits.inStep) driver.catchUp();
      window.draw(now);
      ++frames;
      // Pictures that were missed are not made up for.
      nextFrame = std::max(nextFrame + kFrameInterval, now);
    }
    if (now >= nextSample) nextSample = std::max(nextSample + kSampleInterval, now);
    clock.waitUntil(std::min(nextFrame, nextSample));
  }
}

}  // namespace simulator::live
