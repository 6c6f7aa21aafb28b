// The hand-over of a sample from the device thread to the main thread, until both rest again. The
// peer wakes a thread by a condition variable and is woken by it in turn.
#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "bench/DeviceBench.h"
#include "simulator/moravin/Framework.h"

namespace {

/// Wakes a second thread, which wakes the caller.
class PingPong {
 public:
  PingPong() : thread_([this] { answer(); }) {}
  ~PingPong() {
    set(kStop);
    thread_.join();
  }

  void roundTrip() {
    set(kPing);
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return state_ == kPong; });
  }

 private:
  enum State { kPong, kPing, kStop };

  void set(State state) {
    const std::lock_guard lock(mutex_);
    state_ = state;
    changed_.notify_all();
  }

  void answer() {
    std::unique_lock lock(mutex_);
    while (true) {
      changed_.wait(lock, [this] { return state_ != kPong; });
      if (state_ == kStop) return;
      state_ = kPong;
      changed_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  State state_ = kPong;
  std::thread thread_;
};

void TwoBareWakeUps(benchmark::State& state) {
  PingPong threads;
  for (auto _ : state) threads.roundTrip();
}
BENCHMARK(TwoBareWakeUps)->UseRealTime();

void HandOverAndDispatch(benchmark::State& state) {
  Navigate2D& navigator = prepareMachine();
  static const MrvDeviceEvents connection;
  simulator::runMainLoopUntilIdle();
  const MoravinDeviceState sample = axisSample(0, 100, 0);
  for (auto _ : state) {
    navigator.m_refreshWait = 1;
    simulator::theFramework().send(kMoravinMessageDeviceState, sample);
    simulator::runMainLoopUntilIdle();
  }
}
BENCHMARK(HandOverAndDispatch)->UseRealTime();

}  // namespace
