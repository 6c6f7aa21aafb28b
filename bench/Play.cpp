// What it costs to play a long scenario: a file of samples, 1000 a second, is read as bytes, read
// as steps, and played in the plug-in with and without its log. Time is that of all threads.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

#include "simulator/base/Log.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/ScenarioReader.h"

namespace {

using namespace simulator;

constexpr std::int64_t kSamples = 100'000;

/// Two seconds each of push, sideways motion, twist and rest.
std::array<int, 6> axesAt(std::int64_t millisecond) {
  const double seconds = static_cast<double>(millisecond) / 1000;
  const auto wave = [&](double size) { return static_cast<int>(size * std::sin(3 * seconds)); };
  switch (millisecond / 2000 % 4) {
    case 0:
      return {0, wave(40), 0, 0, 0, 0};
    case 1:
      return {wave(60), 0, wave(50), 0, 0, 0};
    case 2:
      return {0, 0, 0, 0, wave(200), 0};
    default:
      return {};
  }
}

/// A scenario of samples in a file of its own.
class SampleFile {
 public:
  SampleFile() {
    std::ofstream out(name());
    out << R"({"host": {"redrawDelay": 60}, "steps": [{"active": true})";
    for (std::int64_t at = 0; at < kSamples; ++at) {
      const auto a = axesAt(at);
      out << fmt::format(",\n  {{\"at\": {}, \"axes\": [{}, {}, {}, {}, {}, {}]}}", at, a[0], a[1],
                         a[2], a[3], a[4], a[5]);
    }
    out << "]}\n";
  }

  std::string name() const { return home_.path() / "samples.json"; }
  const TemporaryHome& home() const { return home_; }

 private:
  TemporaryHome home_;
};

const SampleFile& sampleFile() {
  static const SampleFile& file = *new SampleFile;
  return file;
}

const ScenarioFile& scenario() {
  static const ScenarioFile& scenario = *new ScenarioFile(sampleFile().name());
  return scenario;
}

/// The plug-in after "Startup". It stays loaded until the process ends.
Player& player() {
  static Player& player = []() -> Player& {
    Player& made = *new Player(scenario().setup(), sampleFile().home());
    made.load(MODULE, FRAMEWORK);
    made.take({0, CallStep{"SP Interface", "Startup"}});
    return made;
  }();
  return player;
}

/// Plays the samples after those that were played before.
void playOnce() {
  static std::int64_t played = 0;
  Player& plugin = player();
  scenario().eachStep([&](const Step& step, const StepPlace&) {
    Step later = step;
    later.at += played;
    plugin.take(later);
  });
  played += kSamples;
}

void countSamples(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * kSamples);
}

void ReadBytes(benchmark::State& state) {
  const InputFile input(sampleFile().name());
  for (auto _ : state) benchmark::DoNotOptimize(input.text());
  countSamples(state);
}
BENCHMARK(ReadBytes)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void ReadSteps(benchmark::State& state) {
  for (auto _ : state) {
    scenario().eachStep([](const Step& step, const StepPlace&) { benchmark::DoNotOptimize(step); });
  }
  countSamples(state);
}
BENCHMARK(ReadSteps)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void PlaySteps(benchmark::State& state) {
  for (auto _ : state) playOnce();
  countSamples(state);
}
BENCHMARK(PlaySteps)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void PlayStepsWithLog(benchmark::State& state) {
  std::string text;
  theLog().setSink([&](const LogLine& line) {
    text.clear();
    line.appendTo(text);
  });
  for (auto _ : state) playOnce();
  theLog().setSink({});
  countSamples(state);
}
BENCHMARK(PlayStepsWithLog)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

}  // namespace
