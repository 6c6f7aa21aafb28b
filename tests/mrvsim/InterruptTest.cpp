// Whatever ends mrvsim, no process and no temporary folder stays behind.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/mrvsim/Cases.h"

namespace {

using simulator::Json;
using testing_support::CaseFolder;
using testing_support::Finished;

/// Ends when all processes that mrvsim started have ended.
void waitForAllProcesses() {
  while (waitpid(-1, nullptr, 0) > 0) {
  }
}

class Interrupt : public testing::Test {
 protected:
  Interrupt() {
    testing_support::adoptOrphans();
    EXPECT_EQ(mkfifo(pipe().c_str(), 0600), 0);
  }

  std::string pipe() const { return folder_.file("pipe"); }

  /// Starts mrvsim with a plug-in that never comes back, and returns when that has begun.
  pid_t startSpinning(const std::vector<std::string>& command) {
    description_["arguments"] = command;
    description_["environment"] = {{"MISBEHAVE", "spin"}, {"HELLO", pipe()}};
    description_["files"]["s.json"] = R"({"steps": [{"call": ["SP Interface", "Startup"]}]})";
    const pid_t process = start(description_, folder_);
    const int reader = open(pipe().c_str(), O_RDONLY | O_CLOEXEC);
    char hello = 0;
    EXPECT_EQ(read(reader, &hello, 1), 1);
    close(reader);
    return process;
  }

  pid_t startPlaying() {
    return startSpinning(
        {"play", "{dir}/s.json", "--plugin", "{misbehaves}", "--log", "{dir}/log"});
  }

  /// Ends mrvsim with the signal and returns what it did.
  Finished end(pid_t process, int signal) {
    kill(process, signal);
    return finish(process, description_, folder_);
  }

  void expectNothingLeft() {
    EXPECT_THAT(folder_.leftovers(), testing::IsEmpty());
    EXPECT_THAT(folder_.files(), testing::ElementsAre("pipe", "s.json"));
    EXPECT_FALSE(testing_support::isAnyProcessLeft());
  }

  CaseFolder folder_;
  Json description_ = Json::object();
};

class InterruptBySignal : public Interrupt, public testing::WithParamInterface<int> {};

TEST_P(InterruptBySignal, OfPlayLeavesNothingAndIsItsStatus) {
  const Finished finished = end(startPlaying(), GetParam());
  EXPECT_EQ(finished.status, 128 + GetParam());
  EXPECT_EQ(finished.errors, "");
  expectNothingLeft();
}

TEST_P(InterruptBySignal, OfCheckLeavesNothingAndIsItsStatus) {
  const pid_t process = startSpinning({"check", "{misbehaves}", "--only", "start-and-stop"});
  EXPECT_EQ(end(process, GetParam()).status, 128 + GetParam());
  expectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(, InterruptBySignal, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT),
                         [](const auto& test) { return std::string(sigabbrev_np(test.param)); });

TEST_F(Interrupt, WhileReadingAPipeLeavesNothing) {
  description_["arguments"] = {"play", "{dir}/pipe"};
  const pid_t process = start(description_, folder_);
  // Returns when mrvsim has opened the other end.
  const int writer = open(pipe().c_str(), O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(end(process, SIGTERM).status, 143);
  close(writer);
  EXPECT_THAT(folder_.leftovers(), testing::IsEmpty());
  EXPECT_FALSE(testing_support::isAnyProcessLeft());
}

TEST_F(Interrupt, WhileWritingToAPipeLeavesNothing) {
  description_["stdout"] = "{dir}/pipe";
  description_["arguments"] = {"play", "{scenarios}/brush.json"};
  const pid_t process = start(description_, folder_);
  const int reader = open(pipe().c_str(), O_RDONLY | O_CLOEXEC);
  char first = 0;
  EXPECT_EQ(read(reader, &first, 1), 1);
  EXPECT_EQ(end(process, SIGINT).status, 130);
  close(reader);
  EXPECT_THAT(folder_.leftovers(), testing::IsEmpty());
  EXPECT_FALSE(testing_support::isAnyProcessLeft());
}

TEST_F(Interrupt, ByASignalThatCannotBeCaughtLeavesNothing) {
  EXPECT_EQ(end(startPlaying(), SIGKILL).status, -SIGKILL);
  waitForAllProcesses();
  expectNothingLeft();
}

TEST_F(Interrupt, OfACheckByASignalThatCannotBeCaughtLeavesNothing) {
  const pid_t process = startSpinning({"check", "{misbehaves}", "--only", "hostile-host"});
  EXPECT_EQ(end(process, SIGKILL).status, -SIGKILL);
  waitForAllProcesses();
  expectNothingLeft();
}

TEST_F(Interrupt, ByAPipeThatGoesAwayIsAnErrorAndLeavesNothing) {
  description_["stdout"] = "{dir}/pipe";
  description_["arguments"] = {"play", "{scenarios}/brush.json"};
  const pid_t process = start(description_, folder_);
  close(open(pipe().c_str(), O_RDONLY | O_CLOEXEC));
  const Finished finished = finish(process, description_, folder_);
  EXPECT_EQ(finished.status, 2);
  EXPECT_EQ(finished.errors,
            "mrvsim: note: {scenarios}/brush.json:1148:3: /steps/1146/layout: the layout "
            "\"com.apple.keylayout.SwissGerman\" is not known; did you mean "
            "\"com.apple.keylayout.German\"?; it has the brush keys of com.apple.keylayout.US\n"
            "mrvsim: standard output: cannot be written: Broken pipe\n");
  EXPECT_THAT(folder_.leftovers(), testing::IsEmpty());
  EXPECT_FALSE(testing_support::isAnyProcessLeft());
}

}  // namespace
