// The report of a long log is made with little memory.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/mrvsim/Cases.h"

namespace {

using simulator::Json;
using testing_support::CaseFolder;
using testing_support::Finished;

/// A sample every ten milliseconds whose axes change all the time.
std::string logOfSamples(int samples) {
  std::string log;
  for (int i = 1; i <= samples; ++i) {
    log += fmt::format(
        R"({{"t":{},"what":"posted","class":"mrvE","kind":2,"priority":2,"parameters":)"
        R"([["tpnx","shor",{}],["tpny","shor",{}],["tpnz","shor",{}],["trtx","shor",{}],)"
        R"(["trty","shor",{}],["trtz","shor",{}],["ttim","comp",{}000000]]}})"
        "\n",
        10 * i, i % 7, i % 11, i % 13, i % 17, i % 19, i % 23, 10 * i);
  }
  return log;
}

TEST(ReportMemory, IsFarLessThanTheLog) {
  const CaseFolder folder;
  const std::string log = logOfSamples(100000);
  const int limit = 8 << 20;
  ASSERT_GT(log.size(), 2U * limit);
  testing_support::writeFile(folder.file("log"), log);
  const Json description = {{"arguments", {"report", "{dir}/log", "{dir}/page"}},
                            {"dataLimit", limit}};
  const Finished finished = finish(start(description, folder), description, folder);
  EXPECT_EQ(finished.errors, "");
  EXPECT_EQ(finished.status, 0);
  EXPECT_LT(testing_support::readFile(folder.file("page")).size(), log.size() / 10);
}

}  // namespace
