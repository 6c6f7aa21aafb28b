// The flights: long scenarios of hand-like motion that a program writes.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/support/Process.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing_support::Finished;
using testing_support::readFile;
using testing_support::run;
using testing_support::TemporaryFolder;

const std::string kFolder = MRV_SCENARIOS "/";

TEST(Flights, AreTheBytesThatTheirGeneratorWrites) {
  const TemporaryFolder folder;
  const Finished made = run({"python3", kFolder + "make_flight.py", folder.file("")});
  EXPECT_EQ(made.status, 0) << made.errors;
  for (const char* name : {"flight.json", "brush.json"}) {
    const std::string text = readFile(folder.file(name));
    EXPECT_FALSE(text.empty());
    EXPECT_TRUE(text == readFile(kFolder + name)) << name << " differs; run make_flight.py";
  }
}

TEST(Flights, LastAMinuteWithEveryKindOfMotion) {
  const auto steps = jsonOf(readFile(kFolder + "flight.json"))["steps"];
  const auto count = [&](const char* kind) {
    return std::count_if(steps.begin(), steps.end(),
                         [&](const Json& step) { return step.contains(kind); });
  };
  EXPECT_EQ(count("axes"), 6000);
  EXPECT_GE(count("click"), 6);
  EXPECT_EQ(count("active"), 2);
  EXPECT_EQ(steps.back()["at"], 61000);
}

/// The sizes at which the brush stops growing or stops shrinking.
std::vector<double> turnsOf(const std::vector<double>& sizes) {
  std::vector<double> turns;
  double direction = 0;
  for (std::size_t i = 1; i < sizes.size(); ++i) {
    const double change = sizes[i] - sizes[i - 1];
    if (change == 0) continue;
    if (change * direction < 0) turns.push_back(sizes[i - 1]);
    direction = change;
  }
  return turns;
}

TEST(Flights, TwistTheBrushSeveralTimesFarEnoughToBeSeen) {
  std::vector<double> sizes;
  std::istringstream log(run({MRVSIM, "play", kFolder + "flight.json"}).output);
  for (std::string text; std::getline(log, text);) {
    if (text.find(R"("what":"view")") == text.npos) continue;
    sizes.push_back(jsonOf(text)["brush"]);
  }
  const std::vector<double> turns = turnsOf(sizes);
  EXPECT_GE(turns.size(), 6U);
  for (std::size_t i = 1; i < turns.size(); ++i) {
    EXPECT_GE(std::max(turns[i], turns[i - 1]) / std::min(turns[i], turns[i - 1]), 3);
  }
  EXPECT_LE(sizes.back(), 50);
}

}  // namespace
