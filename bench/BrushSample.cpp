// One sample of twist, within a gesture and at its start, and reads of the host's descriptors. The
// peers make the same host calls directly: the simulated host's share of each figure.
#include <Carbon/Carbon.h>
#include <HostTerms.h>
#include <benchmark/benchmark.h>

#include "hostactions/BrushSize.h"
#include "hostactions/DescriptorUtilities.h"
#include "hostactions/QueuedEvent.h"
#include "simulator/host/Host.h"
#include "simulator/macos/EventManager.h"
#include "simulator/macos/Folders.h"
#include "simulator/scenario/HostFiles.h"
#include "suites/BasicSuite.h"
#include "suites/Suites.h"

namespace {

constexpr std::uint32_t kKeyDocumentID = fourCharCode("DocI");
constexpr std::uint32_t kKeyTitle = fourCharCode("Ttl ");

/// A host with its files in place and no log, whose version the plug-in has already read.
void prepareHost() {
  static const simulator::TemporaryHome home;
  simulator::writeHostFiles({}, simulator::preferencesFolder(home.path()));
  simulator::setHomeFolder(home.path());
  sSPBasic = simulator::theHost().basicSuite();
  InitBrushSize(nullptr);
  AdjustBrushSize(0);
  ResetBrushSizeAccumulator();
}

/// The host calls of one query for the current tool.
void askForTheToolBare() {
  PIActionReference reference = nullptr;
  PIActionDescriptor answer = nullptr;
  Boolean told = 0;
  sPSActionReference->Make(&reference);
  sPSActionReference->PutProperty(reference, kClassProperty, kKeyTool);
  sPSActionReference->PutEnumerated(reference, kClassApplication, kTypeOrdinal, kEnumTarget);
  sPSActionControl->Get(&answer, reference);
  sPSActionDescriptor->HasKey(answer, kKeyTool, &told);
  sPSActionReference->Free(reference);
  sPSActionDescriptor->Free(answer);
}

void TwistBelowTheMinimum(benchmark::State& state) {
  prepareHost();
  for (auto _ : state) AdjustBrushSize(19);
}
BENCHMARK(TwistBelowTheMinimum);

void TwistWithinAGesture(benchmark::State& state) {
  prepareHost();
  AdjustBrushSize(100);
  int delta = 20;
  for (auto _ : state) AdjustBrushSize(delta = -delta);
}
BENCHMARK(TwistWithinAGesture);

void TwistTypingAKey(benchmark::State& state) {
  prepareHost();
  simulator::EventManager& events = simulator::theEventManager();
  for (auto _ : state) {
    AdjustBrushSize(501);
    while (events.dispatchNext()) {
    }
  }
}
BENCHMARK(TwistTypingAKey);

void TwistStartingAGesture(benchmark::State& state) {
  prepareHost();
  for (auto _ : state) {
    ResetBrushSizeAccumulator();
    AdjustBrushSize(100);
  }
}
BENCHMARK(TwistStartingAGesture);

void TwoBareToolQueries(benchmark::State& state) {
  prepareHost();
  for (auto _ : state) {
    askForTheToolBare();
    askForTheToolBare();
  }
}
BENCHMARK(TwoBareToolQueries);

void BrushPropertyPlayed(benchmark::State& state) {
  prepareHost();
  char key[] = "hardness";
  for (auto _ : state) PlayeventDynamicSetProperty(key, kUnitPercent, 50.0);
}
BENCHMARK(BrushPropertyPlayed);

void IntegerOfTheDocument(benchmark::State& state) {
  prepareHost();
  std::int32_t value = 0;
  for (auto _ : state) PIUGetInfo(kClassDocument, kKeyDocumentID, &value, nullptr);
}
BENCHMARK(IntegerOfTheDocument);

void TextOfTheDocument(benchmark::State& state) {
  prepareHost();
  char text[64];
  for (auto _ : state) {
    std::uint32_t length = sizeof text - 1;
    PIUGetInfo(kClassDocument, kKeyTitle, text, &length);
  }
}
BENCHMARK(TextOfTheDocument);

PIActionDescriptor descriptorWithInteger() {
  auto content = std::make_shared<simulator::Container>();
  content->put(kKeyDocumentID, {kTypeInteger, std::int32_t{5}});
  return simulator::theHost().makeDescriptor(std::move(content));
}

void ItemOfADescriptor(benchmark::State& state) {
  prepareHost();
  const PIActionDescriptor descriptor = descriptorWithInteger();
  std::int32_t value = 0;
  for (auto _ : state) {
    PIUGetSingleItemFromDescriptor(descriptor, kKeyDocumentID, &value, nullptr);
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(ItemOfADescriptor);

void BareItemOfADescriptor(benchmark::State& state) {
  prepareHost();
  const PIActionDescriptor descriptor = descriptorWithInteger();
  Boolean present = 0;
  DescriptorTypeID type = 0;
  std::int32_t value = 0;
  for (auto _ : state) {
    sPSActionDescriptor->HasKey(descriptor, kKeyDocumentID, &present);
    sPSActionDescriptor->GetType(descriptor, kKeyDocumentID, &type);
    sPSActionDescriptor->GetInteger(descriptor, kKeyDocumentID, &value);
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(BareItemOfADescriptor);

}  // namespace
