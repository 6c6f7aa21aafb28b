// Reading action files, compared with reading their bytes with fread.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "actionfiles/ActionFileReader.h"
#include "tests/actionfiles/ActionFileWriter.h"

namespace {

using namespace actionfiles;
using namespace testing_support;

/// A temporary action file with these steps.
class TemporaryActionFile {
 public:
  explicit TemporaryActionFile(std::vector<Step> steps)
      : name_((std::filesystem::temp_directory_path() / ("actions" + std::to_string(getpid())))
                  .string()) {
    std::ofstream(name_, std::ios::binary) << written(setOf(std::move(steps)));
  }
  ~TemporaryActionFile() { std::filesystem::remove(name_); }
  TemporaryActionFile(const TemporaryActionFile&) = delete;
  TemporaryActionFile& operator=(const TemporaryActionFile&) = delete;

  const std::string& name() const { return name_; }
  std::int64_t size() const { return static_cast<std::int64_t>(std::filesystem::file_size(name_)); }

 private:
  std::string name_;
};

Descriptor point() {
  Descriptor descriptor;
  descriptor.type = className(codeId("Pnt "));
  descriptor.items.push_back(
      {codeId("Hrzn"), valueOf(kUnitFloat, UnitFloat{fourCharCode("#Pxl"), 13.5})});
  descriptor.items.push_back(
      {codeId("Vrtc"), valueOf(kUnitFloat, UnitFloat{fourCharCode("#Pxl"), 27.0})});
  return descriptor;
}

/// Items as recorded steps have them.
std::vector<Item> usualItems() {
  std::vector<Item> items;
  Reference target;
  target.push_back(
      {kEnumeratedForm, className(codeId("Lyr ")), Enumerated{codeId("Ordn"), codeId("Trgt")}});
  items.push_back({codeId("null"), valueOf(kReference, std::move(target))});
  items.push_back({codeId("Cntr"), boxed(kObject, point())});
  items.push_back(
      {codeId("Md  "), valueOf(kEnumerated, Enumerated{codeId("BlnM"), codeId("Nrml")})});
  items.push_back({stringId("layerID"), valueOf(kInteger, std::int32_t{3})});
  items.push_back({codeId("AntA"), valueOf(kBoolean, true)});
  items.push_back({codeId("Nm  "), boxed(kText, textOf(u"Layer 1 copy, with a longer name"))});
  items.push_back({codeId("Angl"), valueOf(kFloat, 45.0)});
  return items;
}

/// One step whose descriptor is a list of 20,000 objects of 7 items each.
std::vector<Step> longDescriptor() {
  List list;
  for (int i = 0; i < 20000; ++i) {
    Descriptor object;
    object.type = className(codeId("Lyr "));
    object.items = usualItems();
    list.values.push_back(boxed(kObject, std::move(object)));
  }
  std::vector<Step> steps;
  steps.push_back(stepWith(valueOf(kList, std::move(list))));
  return steps;
}

/// A list of a million numbers of 8 bytes each, and a row of as many in an object array.
std::vector<Step> numbers() {
  constexpr std::size_t kCount = 1'000'000;
  List list;
  for (std::size_t i = 0; i < kCount; ++i) {
    list.values.push_back(valueOf(kFloat, static_cast<double>(i)));
  }
  ObjectArray array;
  array.columns.push_back({codeId("Hrzn"), {fourCharCode("#Pxl"), std::vector<double>(kCount)}});
  std::vector<Step> steps;
  steps.push_back(stepWith(valueOf(kList, std::move(list))));
  steps.push_back(stepWith(boxed(kObjectArray, std::move(array))));
  return steps;
}

std::vector<Step> shortSteps() {
  std::vector<Step> steps;
  for (int i = 0; i < 20000; ++i) {
    steps.push_back(stepOf(stringId("set"), "Set Current Layer", usualItems()));
  }
  return steps;
}

std::vector<Step> rawData() {
  std::vector<Step> steps;
  for (int i = 0; i < 10; ++i) {
    steps.push_back(stepWith(valueOf(kRawData, Data{std::string(1'000'000, 'x')})));
  }
  return steps;
}

void measureReading(benchmark::State& state, std::vector<Step> steps) {
  const TemporaryActionFile file(std::move(steps));
  for (auto _ : state) {
    FileSource source(file.name());
    ActionFileReader reader(source);
    while (reader.nextAction() != nullptr) {
      while (const Step* step = reader.nextStep()) benchmark::DoNotOptimize(step);
    }
  }
  state.SetBytesProcessed(state.iterations() * file.size());
}

void measureFread(benchmark::State& state, std::vector<Step> steps) {
  const TemporaryActionFile file(std::move(steps));
  std::vector<char> buffer(1 << 16);
  for (auto _ : state) {
    std::FILE* stream = std::fopen(file.name().c_str(), "rb");
    while (std::fread(buffer.data(), 1, buffer.size(), stream) > 0) {
      benchmark::DoNotOptimize(buffer.data());
      benchmark::ClobberMemory();
    }
    std::fclose(stream);
  }
  state.SetBytesProcessed(state.iterations() * file.size());
}

void ReadLongDescriptor(benchmark::State& state) { measureReading(state, longDescriptor()); }
void FreadLongDescriptor(benchmark::State& state) { measureFread(state, longDescriptor()); }
void ReadNumbers(benchmark::State& state) { measureReading(state, numbers()); }
void FreadNumbers(benchmark::State& state) { measureFread(state, numbers()); }
void ReadShortSteps(benchmark::State& state) { measureReading(state, shortSteps()); }
void FreadShortSteps(benchmark::State& state) { measureFread(state, shortSteps()); }
void ReadRawData(benchmark::State& state) { measureReading(state, rawData()); }
void FreadRawData(benchmark::State& state) { measureFread(state, rawData()); }

BENCHMARK(ReadLongDescriptor)->Unit(benchmark::kMillisecond);
BENCHMARK(FreadLongDescriptor)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(FreadNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadShortSteps)->Unit(benchmark::kMillisecond);
BENCHMARK(FreadShortSteps)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadRawData)->Unit(benchmark::kMillisecond);
BENCHMARK(FreadRawData)->Unit(benchmark::kMillisecond);

}  // namespace
