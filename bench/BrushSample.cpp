// One sample of twist, within a gesture and at its start, and reads of the host's descriptors. The
// host's calls done bare are the simulated host's share of each figure.
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

/// A silent host with its files in place, of which the plug-in knows the version already.
void prepareHost() {
  static const simulator::TemporaryHome home;
  simulator::writeHostFiles({}, simulator::preferencesFolder(home.path()));
  simulator::setHomeFolder(home.path());
  sSPBasic = simulator::theHost().basicSuite();
  InitBrushSize(nullptr);
  AdjustBrushSize(0);
  ResetBrushSizeAccumulator();
}

/// What one question for the current tool costs the host alone.
void askBare() {
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

void sampleBelowTheLeast(benchmark::State& bench) {
  prepareHost();
  for (auto _ : bench) AdjustBrushSize(19);
}
BENCHMARK(sampleBelowTheLeast);

void sampleWithinAGesture(benchmark::State& bench) {
  prepareHost();
  AdjustBrushSize(100);
  int delta = 20;
  for (auto _ : bench) AdjustBrushSize(delta = -delta);
}
BENCHMARK(sampleWithinAGesture);

void sampleThatTypesAKey(benchmark::State& bench) {
  prepareHost();
  simulator::EventManager& events = simulator::theEventManager();
  for (auto _ : bench) {
    AdjustBrushSize(501);
    while (events.dispatchNext()) {
    }
  }
}
BENCHMARK(sampleThatTypesAKey);

void sampleAtTheStartOfAGesture(benchmark::State& bench) {
  prepareHost();
  for (auto _ : bench) {
    ResetBrushSizeAccumulator();
    AdjustBrushSize(100);
  }
}
BENCHMARK(sampleAtTheStartOfAGesture);

void twoQuestionsForTheToolBare(benchmark::State& bench) {
  prepareHost();
  for (auto _ : bench) {
    askBare();
    askBare();
  }
}
BENCHMARK(twoQuestionsForTheToolBare);

void brushPropertyPlayed(benchmark::State& bench) {
  prepareHost();
  char key[] = "hardness";
  for (auto _ : bench) PlayeventDynamicSetProperty(key, kUnitPercent, 50.0);
}
BENCHMARK(brushPropertyPlayed);

void integerOfTheDocument(benchmark::State& bench) {
  prepareHost();
  std::int32_t value = 0;
  for (auto _ : bench) PIUGetInfo(kClassDocument, kKeyDocumentID, &value, nullptr);
}
BENCHMARK(integerOfTheDocument);

void textOfTheDocument(benchmark::State& bench) {
  prepareHost();
  char text[64];
  for (auto _ : bench) {
    std::uint32_t length = sizeof text - 1;
    PIUGetInfo(kClassDocument, kKeyTitle, text, &length);
  }
}
BENCHMARK(textOfTheDocument);

PIActionDescriptor descriptorWithInteger() {
  auto content = std::make_shared<simulator::Container>();
  content->put(kKeyDocumentID, {kTypeInteger, std::int32_t{5}});
  return simulator::theHost().makeDescriptor(std::move(content));
}

void itemOfADescriptor(benchmark::State& bench) {
  prepareHost();
  const PIActionDescriptor descriptor = descriptorWithInteger();
  std::int32_t value = 0;
  for (auto _ : bench) {
    PIUGetSingleItemFromDescriptor(descriptor, kKeyDocumentID, &value, nullptr);
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(itemOfADescriptor);

void itemOfADescriptorBare(benchmark::State& bench) {
  prepareHost();
  const PIActionDescriptor descriptor = descriptorWithInteger();
  Boolean present = 0;
  DescriptorTypeID type = 0;
  std::int32_t value = 0;
  for (auto _ : bench) {
    sPSActionDescriptor->HasKey(descriptor, kKeyDocumentID, &present);
    sPSActionDescriptor->GetType(descriptor, kKeyDocumentID, &type);
    sPSActionDescriptor->GetInteger(descriptor, kKeyDocumentID, &value);
    benchmark::DoNotOptimize(value);
  }
}
BENCHMARK(itemOfADescriptorBare);

}  // namespace
