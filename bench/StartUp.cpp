// Start-up and shut-down through the entry point, beside the start of a bare thread.
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

void bareThread(benchmark::State& bench) {
  for (auto _ : bench) std::thread([] {}).join();
}
BENCHMARK(bareThread);

// Each start-up leaves its device thread behind, idle, so their number is bounded.
void startUpAndShutDown(benchmark::State& bench) {
  prepareMachine();
  for (auto _ : bench) {
    call("Startup");
    call("Shutdown");
  }
}
BENCHMARK(startUpAndShutDown)->Iterations(500);

}  // namespace
