// One axis sample, from the framework's callback to the end of its dispatch. The peer is an event
// of the same size that no handler takes: the simulated event manager's share of each figure.
#include <benchmark/benchmark.h>

#include "bench/DeviceBench.h"

namespace {

void BareEventOfTheSameSize(benchmark::State& state) {
  prepareMachine();
  simulator::EventManager& events = simulator::theEventManager();
  const std::int16_t value = 5;
  const std::int64_t time = 7;
  for (auto _ : state) {
    EventRef event = nullptr;
    CreateEvent(nullptr, fourCharCode("none"), 2, 0.0, kEventAttributeUserEvent, &event);
    for (EventParamName name = 1; name <= 6; ++name) {
      SetEventParameter(event, name, typeSInt16, sizeof value, &value);
    }
    SetEventParameter(event, 7, typeSInt64, sizeof time, &time);
    PostEventToQueue(GetMainEventQueue(), event, kEventPriorityHigh);
    ReleaseEvent(event);
    events.dispatchNext();
  }
}
BENCHMARK(BareEventOfTheSameSize);

void SampleDroppedByPacing(benchmark::State& state) {
  Navigate2D& navigator = prepareMachine();
  MoravinDeviceState sample = axisSample(0, 100, 0);
  for (auto _ : state) {
    navigator.m_refreshWait = 1;
    deliver(sample);
  }
}
BENCHMARK(SampleDroppedByPacing);

void SampleGathered(benchmark::State& state) {
  Navigate2D& navigator = prepareMachine();
  MoravinDeviceState sample = axisSample(0, 1, 0);
  std::int16_t direction = 1;
  for (auto _ : state) {
    navigator.m_refreshWait = 0;
    sample.axis[1] = direction = static_cast<std::int16_t>(-direction);
    deliver(sample);
  }
}
BENCHMARK(SampleGathered);

void SampleTickingZoom(benchmark::State& state) {
  Navigate2D& navigator = prepareMachine();
  MoravinDeviceState sample = axisSample(0, 100, 0);
  for (auto _ : state) {
    navigator.m_refreshWait = 0;
    deliver(sample);
    simulator::theWindowServer().deliverInput();
  }
}
BENCHMARK(SampleTickingZoom);

void SampleTickingPan(benchmark::State& state) {
  Navigate2D& navigator = prepareMachine();
  MoravinDeviceState sample = axisSample(100, 0, 0);
  for (auto _ : state) {
    navigator.m_refreshWait = 0;
    deliver(sample);
    simulator::theWindowServer().deliverInput();
  }
}
BENCHMARK(SampleTickingPan);

}  // namespace
