// Numbers as text and the suffix match, compared with the standard library and fmt.
#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "hostutil/Strings.h"

namespace {

constexpr std::size_t kCount = 1024;

// Whole numbers of one to ten digits.
std::vector<std::int32_t> wholeNumbers() {
  std::mt19937 random(1);
  std::vector<std::int32_t> numbers(kCount);
  for (auto& number : numbers) number = static_cast<std::int32_t>(random()) >> (random() % 32);
  return numbers;
}

std::vector<double> fractions() {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> distribution(-10000.0, 10000.0);
  std::vector<double> numbers(kCount);
  for (auto& number : numbers) number = distribution(random);
  return numbers;
}

template <class Number, class Write>
void writeAll(benchmark::State& state, const std::vector<Number>& numbers, Write write) {
  unsigned char text[512];
  for (auto _ : state) {
    for (const Number number : numbers) {
      write(number, text);
      benchmark::DoNotOptimize(text);
      benchmark::ClobberMemory();
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

char* characters(unsigned char* text) { return reinterpret_cast<char*>(text) + 1; }

void NumToStringOurs(benchmark::State& state) {
  writeAll(state, wholeNumbers(),
           [](std::int32_t number, unsigned char* text) { NumToString(number, text); });
}

void NumToStringStdToChars(benchmark::State& state) {
  writeAll(state, wholeNumbers(), [](std::int32_t number, unsigned char* text) {
    *std::to_chars(characters(text), characters(text) + 254, number).ptr = 0;
  });
}

void NumToStringFmt(benchmark::State& state) {
  writeAll(state, wholeNumbers(), [](std::int32_t number, unsigned char* text) {
    *fmt::format_to(characters(text), FMT_STRING("{}"), number) = 0;
  });
}

BENCHMARK(NumToStringOurs);
BENCHMARK(NumToStringStdToChars);
BENCHMARK(NumToStringFmt);

void DoubleToStringOurs(benchmark::State& state) {
  const auto places = static_cast<short>(state.range(0));
  writeAll(state, fractions(), [places](double number, unsigned char* text) {
    benchmark::DoNotOptimize(DoubleToString(text, places, number));
  });
}

void DoubleToStringStdToChars(benchmark::State& state) {
  const auto places = static_cast<int>(state.range(0));
  writeAll(state, fractions(), [places](double number, unsigned char* text) {
    char* const first = characters(text);
    *std::to_chars(first, first + 254, number, std::chars_format::fixed, places).ptr = 0;
  });
}

void DoubleToStringFmt(benchmark::State& state) {
  const auto places = static_cast<int>(state.range(0));
  writeAll(state, fractions(), [places](double number, unsigned char* text) {
    *fmt::format_to(characters(text), FMT_STRING("{:.{}f}"), number, places) = 0;
  });
}

BENCHMARK(DoubleToStringOurs)->Arg(1)->Arg(3)->Arg(6);
BENCHMARK(DoubleToStringStdToChars)->Arg(1)->Arg(3)->Arg(6);
BENCHMARK(DoubleToStringFmt)->Arg(1)->Arg(3)->Arg(6);

// File names, about half of which end with the pattern.
std::vector<std::string> fileNames() {
  std::mt19937 random(3);
  std::vector<std::string> names(kCount);
  for (auto& name : names) {
    for (auto length = 4 + random() % 40; length > 0; --length) {
      name += static_cast<char>('a' + random() % 26);
    }
    name += random() % 2 ? ".psd" : ".tif";
  }
  return names;
}

template <class Match>
void matchAll(benchmark::State& state, Match match) {
  const std::vector<std::string> names = fileNames();
  const char* pattern = ".psd";
  for (auto _ : state) {
    for (const std::string& name : names) {
      benchmark::DoNotOptimize(pattern);
      benchmark::DoNotOptimize(match(name.c_str(), pattern));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void HostMatchOurs(benchmark::State& state) {
  matchAll(state, [](const char* text, const char* pattern) {
    return HostMatch(text, pattern, false, 255);
  });
}

void HostMatchStdEndsWith(benchmark::State& state) {
  matchAll(state, [](const char* text, const char* pattern) {
    return std::string_view(text).ends_with(std::string_view(pattern));
  });
}

BENCHMARK(HostMatchOurs);
BENCHMARK(HostMatchStdEndsWith);

}  // namespace
