// The look-up of an identifier's name, compared with the scan of the whole table that it replaces.
#include "codegen/Terminology.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace {

void scan(std::uint32_t id, const char* kind, char* out) {
  const auto row = std::find_if(std::begin(PSConstA), std::end(PSConstA), [&](const PSConst& r) {
    return r.id == id && std::strstr(r.name, kind) != nullptr;
  });
  std::strcpy(out, row == std::end(PSConstA) ? "'none'" : row->name);
}

void LongToStrOfEveryRow(benchmark::State& state) {
  char out[kNameSize];
  for (auto _ : state) {
    for (const PSConst& row : PSConstA) {
      if (!isRuntimeID(row.id)) LongToStr(static_cast<std::int32_t>(row.id), "key", out);
      benchmark::DoNotOptimize(out);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPSConstCount));
}
BENCHMARK(LongToStrOfEveryRow);

void ScanForEveryRow(benchmark::State& state) {
  char out[kNameSize];
  for (auto _ : state) {
    for (const PSConst& row : PSConstA) {
      if (!isRuntimeID(row.id)) scan(row.id, "key", out);
      benchmark::DoNotOptimize(out);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPSConstCount));
}
BENCHMARK(ScanForEveryRow);

}  // namespace
