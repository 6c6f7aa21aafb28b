// Start-up and shut-down through the entry point, compared with the start of a bare thread.
#include <benchmark/benchmark.h>

#include <thread>

#include "bench/DeviceBench.h"
#include "plugin/AutoPluginMain.h"

namespace {

void call(const char* selector) {
  simulator::Host& host = simulator::theHost();
  SPMessageData message = {0, host.plugIn(), nullptr, host.basicSuite()};
  AutoPluginMain("SP Interface", selector, &message);
  simulator::runMainLoopUntilIdle();
}

void BareThread(benchmark::State& state) {
  for (auto _ : state) std::thread([] {}).join();
}
BENCHMARK(BareThread);

// The number of iterations is fixed, because each start-up leaves one idle device thread.
void StartUpAndShutDown(benchmark::State& state) {
  prepareMachine();
  for (auto _ : state) {
    call("Startup");
    call("Shutdown");
  }
}
BENCHMARK(StartUpAndShutDown)->Iterations(500);

}  // namespace
