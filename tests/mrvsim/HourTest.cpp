// Plays an hour of device samples, 1000 a second, with little memory.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdio>
#include <deque>
#include <fstream>
#include <string>

#include "tests/mrvsim/Cases.h"

namespace {

using simulator::Json;
using testing_support::CaseFolder;
using testing_support::Finished;

constexpr std::int64_t kHour = 3'600'000;

struct Log {
  std::uint64_t lines = 0;
  std::deque<std::string> last;  ///< at most eight
};

/// Writes a scenario with a sample in each of the first `samples` milliseconds, and a shut-down
/// after an hour.
void writeScenario(const std::string& file, std::int64_t samples) {
  std::ofstream out(file);
  out << R"({"steps": [{"call": ["SP Interface", "Startup"]})";
  for (std::int64_t at = 0; at < samples; ++at) {
    out << ",\n{\"at\": " << at << R"(, "axes": [0, 0, 0, 0, 0, 0]})";
  }
  out << ",\n{\"at\": " << kHour << R"(, "call": ["SP Interface", "Shutdown"]}]})" << '\n';
}

Log readLog(const std::string& file) {
  Log log;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line); ++log.lines) {
    log.last.push_back(line);
    if (log.last.size() > 8) log.last.pop_front();
  }
  return log;
}

/// Plays through a pipe, so that the log needs no disk. Each process of mrvsim may have 8 MB of
/// memory for its data.
Log play(std::int64_t samples) {
  const CaseFolder folder;
  const std::string pipe = folder.file("log");
  EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  writeScenario(folder.file("s.json"), samples);
  const Json description = {{"arguments", {"play", "{dir}/s.json", "--log", "{dir}/log"}},
                            {"dataLimit", 8 << 20}};
  const pid_t process = start(description, folder);
  Log log = readLog(pipe);
  const Finished finished = finish(process, description, folder);
  EXPECT_EQ(finished.status, 0);
  EXPECT_EQ(finished.errors, "");
  return log;
}

TEST(Hour, IsPlayedWithLittleMemoryAndLoggedToItsEnd) {
  const Log none = play(0);
  const Log hour = play(kHour);
  EXPECT_EQ(hour.lines, none.lines + kHour) << "a line for each sample";
  EXPECT_EQ(hour.last, none.last) << "what follows the last sample";
  EXPECT_THAT(hour.last.back(), testing::StartsWith(R"({"t":3600000,)"));
}

}  // namespace
