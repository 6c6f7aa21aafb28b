// Dumping a descriptor of many items, compared with writing the same bytes with fwrite to a file in
// the same folder. Two hosts: the simulated one, and a bare one that costs almost nothing. Their
// difference is the simulated host's share; the rest is the generator's.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "codegen/DumpDescriptor.h"
#include "codegen/ReadyFile.h"
#include "hostutil/File.h"
#include "platform/host/HostTerms.h"
#include "simulator/host/Host.h"
#include "suites/BasicSuite.h"
#include "suites/Suites.h"

namespace {

constexpr std::int64_t kItems = 1'000'000;
constexpr DescriptorKeyID kFirstKey = fourCharCode("0000");

std::string fileName(const char* name) {
  return (std::filesystem::temp_directory_path() / (name + std::to_string(getpid()))).string();
}

using Dump = void (*)(PIActionDescriptor descriptor, const std::string& file);

/// Dumps the descriptor to a new file.
void dump(PIActionDescriptor descriptor, const std::string& file) {
  std::filesystem::remove(file);
  PIUDumpDescriptor(kEventSet, descriptor, file.c_str());
}

/// The same in the ready form.
void dumpReady(PIActionDescriptor descriptor, const std::string& file) {
  const File stream(std::fopen(file.c_str(), "w"));
  ReadyFile ready(stream.get());
  ready.beginAction("Set", "Action", 1);
  ready.addStep({}, kEventSet, descriptor);
  ready.finish();
}

void measureDump(benchmark::State& state, PIActionDescriptor descriptor, Dump write) {
  const std::string file = fileName("dump");
  for (auto _ : state) write(descriptor, file);
  state.SetBytesProcessed(state.iterations() *
                          static_cast<std::int64_t>(std::filesystem::file_size(file)));
  state.SetComplexityN(state.range(0));
  std::filesystem::remove(file);
}

simulator::ContainerPtr integers(std::int64_t count) {
  auto container = std::make_shared<simulator::Container>();
  for (std::int64_t i = 0; i < count; ++i) {
    container->put(kFirstKey + static_cast<DescriptorKeyID>(i),
                   {kTypeInteger, static_cast<std::int32_t>(i)});
  }
  return container;
}

PIActionDescriptor simulated(std::int64_t count) {
  sSPBasic = simulator::theHost().basicSuite();
  return simulator::theHost().makeDescriptor(integers(count));
}

void DumpFromSimulatedHost(benchmark::State& state) {
  PIUSuitesRelease();
  measureDump(state, simulated(state.range(0)), dump);
}
BENCHMARK(DumpFromSimulatedHost)
    ->RangeMultiplier(10)
    ->Range(kItems / 100, kItems)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

/// A host with one descriptor, whose item i has the key kFirstKey + i and the value i.
struct BareHost {
  static inline uint32 count = 0;
  PSActionDescriptorProcs descriptor{};
  PSActionListProcs list{};
  PSActionReferenceProcs reference{};
  PSActionControlProcs control{};

  explicit BareHost(std::int64_t items) {
    count = static_cast<uint32>(items);
    descriptor.GetCount = [](PIActionDescriptor, uint32* out) -> OSErr { return *out = count, 0; };
    descriptor.GetKey = [](PIActionDescriptor, uint32 i, DescriptorKeyID* key) -> OSErr {
      return *key = kFirstKey + i, 0;
    };
    descriptor.GetType = [](PIActionDescriptor, DescriptorKeyID, DescriptorTypeID* type) -> OSErr {
      return *type = kTypeInteger, 0;
    };
    descriptor.GetInteger = [](PIActionDescriptor, DescriptorKeyID key, int32* value) -> OSErr {
      return *value = static_cast<int32>(key - kFirstKey), 0;
    };
    sPSActionDescriptor.suite = &descriptor;
    sPSActionList.suite = &list;
    sPSActionReference.suite = &reference;
    sPSActionControl.suite = &control;
  }

  ~BareHost() {
    sPSActionDescriptor.suite = nullptr;
    sPSActionList.suite = nullptr;
    sPSActionReference.suite = nullptr;
    sPSActionControl.suite = nullptr;
  }
};

void DumpFromBareHost(benchmark::State& state) {
  PIUSuitesRelease();
  const BareHost host(state.range(0));
  measureDump(state, reinterpret_cast<PIActionDescriptor>(0x600000000011), dump);
}
BENCHMARK(DumpFromBareHost)
    ->RangeMultiplier(10)
    ->Range(kItems / 100, kItems)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

void ReadyFromBareHost(benchmark::State& state) {
  PIUSuitesRelease();
  const BareHost host(state.range(0));
  measureDump(state, reinterpret_cast<PIActionDescriptor>(0x600000000011), dumpReady);
}
BENCHMARK(ReadyFromBareHost)
    ->RangeMultiplier(10)
    ->Range(kItems / 100, kItems)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

/// A list of objects as recorded steps have them, of seven items each.
PIActionDescriptor recorded(std::int64_t objects) {
  sSPBasic = simulator::theHost().basicSuite();
  auto& ids = simulator::theHost().typeIds();
  const simulator::ContainerPtr object = simulator::descriptorFromJson(simulator::jsonOf(R"([
          {"key": "null", "type": "obj ", "value": [
              {"form": "Enmr", "class": "Lyr ", "enumType": "Ordn", "value": "Trgt"}]},
          {"key": "Md  ", "type": "enum", "enumType": "BlnM", "value": "Nrml"},
          {"key": "$layerID", "type": "long", "value": 3},
          {"key": "AntA", "type": "bool", "value": true},
          {"key": "Nm  ", "type": "TEXT", "value": "Layer 1 copy, with a longer name"},
          {"key": "Wdth", "type": "UntF", "unit": "#Pxl", "value": 13.57},
          {"key": "Angl", "type": "doub", "value": 45}])"),
                                                                       ids);
  auto list = std::make_shared<simulator::Container>();
  for (std::int64_t i = 0; i < objects; ++i) {
    list->entries.push_back({0, {kTypeObject, simulator::Object{kClassLayer, object}}});
  }
  auto root = std::make_shared<simulator::Container>();
  root->put(kKeyTo, {kTypeValueList, simulator::List{std::move(list)}});
  return simulator::theHost().makeDescriptor(std::move(root));
}

void DumpRecorded(benchmark::State& state) {
  PIUSuitesRelease();
  measureDump(state, recorded(state.range(0)), dump);
}
BENCHMARK(DumpRecorded)->Arg(20000)->Unit(benchmark::kMillisecond);

void ReadyRecorded(benchmark::State& state) {
  PIUSuitesRelease();
  measureDump(state, recorded(state.range(0)), dumpReady);
}
BENCHMARK(ReadyRecorded)->Arg(20000)->Unit(benchmark::kMillisecond);

std::string dumpedText(std::int64_t items) {
  const std::string file = fileName("text");
  dump(simulated(items), file);
  std::stringstream bytes;
  bytes << std::ifstream(file).rdbuf();
  std::filesystem::remove(file);
  return bytes.str();
}

/// Measures `write`, which writes the dumped text to the stream of a new file.
template <class Write>
void measureFwrite(benchmark::State& state, Write write) {
  const std::string text = dumpedText(state.range(0));
  const std::string file = fileName("fwrite");
  for (auto _ : state) {
    std::filesystem::remove(file);
    std::FILE* stream = std::fopen(file.c_str(), "a");
    write(text, stream);
    std::fclose(stream);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  std::filesystem::remove(file);
}

void FwriteInOnePiece(benchmark::State& state) {
  measureFwrite(state, [](std::string_view text, std::FILE* stream) {
    std::fwrite(text.data(), 1, text.size(), stream);
  });
}
BENCHMARK(FwriteInOnePiece)->Arg(kItems)->Unit(benchmark::kMillisecond);

void FwriteLineByLine(benchmark::State& state) {
  measureFwrite(state, [](std::string_view text, std::FILE* stream) {
    while (!text.empty()) {
      const std::size_t length = text.find('\n') + 1;
      std::fwrite(text.data(), 1, length, stream);
      text.remove_prefix(length);
    }
  });
}
BENCHMARK(FwriteLineByLine)->Arg(kItems)->Unit(benchmark::kMillisecond);

}  // namespace
