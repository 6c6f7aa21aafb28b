#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "simulator/scenario/WatchedProcess.h"

namespace {

using namespace simulator;

constexpr double kLong = 60;
constexpr double kShort = 0.05;

/// The messages of a child and its end.
struct Watched {
  Watched(const std::function<void(Channel&)>& work, double seconds) {
    WatchedProcess process(work, seconds);
    end = process.watch(
        [this](char kind, std::string_view text) { messages.push_back(kind + std::string(text)); });
  }

  std::vector<std::string> messages;
  ProcessEnd end;
};

[[noreturn]] void spin() {
  volatile unsigned turns = 0;
  while (true) turns = turns + 1;
}

TEST(WatchedProcess, PassesOnMessagesOfEverySize) {
  const std::string large(1000000, 'x');
  const Watched run(
      [&](Channel& channel) {
        channel.send('a', "one");
        channel.send('b', "");
        channel.send('c', large);
        channel.send('d', "four");
      },
      kLong);
  EXPECT_THAT(run.messages, testing::ElementsAre("aone", "b", "c" + large, "dfour"));
  EXPECT_EQ(run.end.how, ProcessEnd::kFinished);
}

TEST(WatchedProcess, LosesNoMessageOfAChildThatIsKilled) {
  const Watched run(
      [](Channel& channel) {
        for (int i = 0; i < 100000; ++i) channel.send('n', std::to_string(i));
        kill(getpid(), SIGKILL);
      },
      kLong);
  ASSERT_EQ(run.messages.size(), 100000U);
  EXPECT_EQ(run.messages.back(), "n99999");
  EXPECT_EQ(run.end.how, ProcessEnd::kSignalled);
  EXPECT_EQ(run.end.number, SIGKILL);
}

TEST(WatchedProcess, SaysWhereTheChildWas) {
  const Watched run(
      [](Channel& channel) {
        channel.reach({Milestone::kPlaying, 7, 12, 3, "axes"});
        _exit(9);
      },
      kLong);
  EXPECT_EQ(run.end.how, ProcessEnd::kExited);
  EXPECT_EQ(run.end.number, 9);
  EXPECT_EQ(run.end.milestone.phase, Milestone::kPlaying);
  EXPECT_EQ(run.end.milestone.step, 7U);
  EXPECT_EQ(run.end.milestone.line, 12U);
  EXPECT_EQ(run.end.milestone.column, 3U);
  EXPECT_STREQ(run.end.milestone.kind, "axes");
}

TEST(WatchedProcess, EndsAChildThatSpins) {
  const Watched run([](Channel&) { spin(); }, kShort);
  EXPECT_EQ(run.end.how, ProcessEnd::kTimedOut);
  EXPECT_EQ(run.end.text(kShort), "did not come back within 0.05 s");
}

TEST(WatchedProcess, EndsAChildThatSpinsAndSends) {
  const Watched run(
      [](Channel& channel) {
        while (true) channel.send('x', "on and on");
      },
      kShort);
  EXPECT_EQ(run.end.how, ProcessEnd::kTimedOut);
}

TEST(WatchedProcess, EndsAChildThatWaitsForGood) {
  const Watched run([](Channel&) { pause(); }, kShort);
  EXPECT_EQ(run.end.how, ProcessEnd::kTimedOut);
}

TEST(WatchedProcess, GivesAChildThatMakesProgressMoreTime) {
  constexpr double kLimit = 0.1;
  // Ten times as much processor time as the limit, in five hundred parts.
  const auto work = [](bool progress) {
    return [progress](Channel& channel) {
      for (int part = 0; part < 500; ++part) {
        timespec begin = {};
        timespec now = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &begin);
        do {
          clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
        } while ((now.tv_sec - begin.tv_sec) * 1000000000L + now.tv_nsec - begin.tv_nsec <
                 static_cast<long>(kLimit * 1e9 / 50));
        if (progress) channel.makeProgress();
      }
    };
  };
  EXPECT_EQ(Watched(work(true), kLimit).end.how, ProcessEnd::kFinished);
  EXPECT_EQ(Watched(work(false), kLimit).end.how, ProcessEnd::kTimedOut);
}

TEST(WatchedProcess, EndsTheChildIfAMessageIsNotWanted) {
  struct Unwanted {};
  {
    WatchedProcess process(
        [](Channel& channel) {
          channel.send('x', "");
          channel.flush();
          pause();
        },
        kLong);
    EXPECT_THROW(process.watch([](char, std::string_view) { throw Unwanted(); }), Unwanted);
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

TEST(WatchedProcess, GivesTheChildNeitherInputNorOutput) {
  const Watched run(
      [](Channel& channel) {
        char c = 0;
        channel.send('r', std::to_string(read(STDIN_FILENO, &c, 1)));
        channel.send('w', std::to_string(write(STDOUT_FILENO, "x", 1)));
        channel.send('s', getsid(0) == getpid() ? "own session" : "shared session");
      },
      kLong);
  EXPECT_THAT(run.messages, testing::ElementsAre("r0", "w1", "sown session"));
}

}  // namespace
