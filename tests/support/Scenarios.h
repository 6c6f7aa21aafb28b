// The project's scenarios, by name. A program that includes this is compiled with MRV_SCENARIOS,
// their folder.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace testing_support {

/// The names of the scenarios that have a file of this ending, sorted. All have ".json".
inline std::vector<std::string> scenariosWith(const std::string& ending) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_SCENARIOS)) {
    const std::string name = entry.path().filename().string();
    if (name.ends_with(ending)) names.push_back(name.substr(0, name.size() - ending.size()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

inline std::string scenarioFile(const std::string& name) {
  return MRV_SCENARIOS "/" + name + ".json";
}

/// Names a test after its scenario.
inline std::string scenarioName(const testing::TestParamInfo<std::string>& test) {
  std::string name = test.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

}  // namespace testing_support
