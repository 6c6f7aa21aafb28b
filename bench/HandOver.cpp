// The hand-over from the device thread to the main thread and back to rest, beside the bare cost of
// waking a thread by condition variable, and being woken by it, in the same run.
#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "bench/DeviceBench.h"
#include "simulator/moravin/Framework.h"

namespace {

/// Two threads that wake each other in turn.
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

void twoBareWakeUps(benchmark::State& bench) {
  PingPong threads;
  for (auto _ : bench) threads.roundTrip();
}
BENCHMARK(twoBareWakeUps)->UseRealTime();

void handOverAndDispatch(benchmark::State& bench) {
  Navigate2D& navigator = prepareMachine();
  static const MrvDeviceEvents connection;
  simulator::runMainLoopUntilIdle();
  const MoravinDeviceState sample = axisSample(0, 100, 0);
  for (auto _ : bench) {
    navigator.m_refreshWait = 1;
    simulator::theFramework().send(kMoravinMessageDeviceState, sample);
    simulator::runMainLoopUntilIdle();
  }
}
BENCHMARK(handOverAndDispatch)->UseRealTime();

}  // namespace
