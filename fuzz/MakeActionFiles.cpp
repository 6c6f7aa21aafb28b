// Writes small action files for the fuzzer to start from: make_action_files FOLDER
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/RandomSteps.h"

namespace {

using namespace testing_support;

/// A file for each item type, and some with random steps.
std::vector<std::string> files() {
  std::vector<std::string> all;
  for (actionfiles::Value& value : everyType()) {
    std::vector<actionfiles::Step> steps;
    steps.push_back(stepWith(std::move(value)));
    all.push_back(written(setOf(std::move(steps))));
  }
  for (std::uint32_t seed = 1; seed <= 8; ++seed) {
    const std::string bytes = written(RandomSteps(seed).set(3));
    if (bytes.size() < 4096) all.push_back(bytes);
  }
  return all;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_action_files FOLDER\n");
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  std::filesystem::create_directories(folder);
  int number = 0;
  for (const std::string& bytes : files()) {
    std::ofstream(folder / (std::to_string(number++) + ".atn"), std::ios::binary) << bytes;
  }
  return 0;
}
