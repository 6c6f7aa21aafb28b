// The project's scenarios, by name.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

/// The names of all scenarios in tests/scenarios, sorted.
inline std::vector<std::string> scenarios() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(MRV_SCENARIOS)) {
    if (entry.path().extension() == ".json") names.push_back(entry.path().stem().string());
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
