#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

#include "simulator/check/Progress.h"

namespace {

using simulator::currentExceptionText;
using simulator::Progress;

/// Runs `work` in a child process, which an exception out of it ends, and returns how that ended.
int statusOf(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    [&]() noexcept { work(); }();
    _exit(0);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

TEST(Progress, CountsTheStepsOfAChild) {
  Progress progress;
  EXPECT_EQ(progress.steps(), 0U);
  EXPECT_EQ(statusOf([&] {
              progress.beginStep();
              progress.beginStep();
            }),
            0);
  EXPECT_EQ(progress.steps(), 2U);
  statusOf([&] { progress.beginStep(); });
  EXPECT_EQ(progress.steps(), 3U);
  EXPECT_EQ(Progress().steps(), 0U);
}

TEST(Progress, NamesTheExceptionThatEndedAChild) {
  Progress progress;
  const int status = statusOf([&] {
    progress.recordUncaughtExceptions();
    throw std::runtime_error("no\nsuite");
  });
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
  EXPECT_EQ(progress.exception(), "threw std::runtime_error (\"no suite\")");
}

TEST(Progress, NamesAnExceptionOnAnotherThread) {
  Progress progress;
  statusOf([&] {
    progress.recordUncaughtExceptions();
    std::thread([] { throw 7; }).join();
  });
  EXPECT_EQ(progress.exception(), "threw int (7)");
}

TEST(Progress, NamesNoExceptionIfNoneEndedTheChild) {
  Progress progress;
  const int status = statusOf([&] {
    progress.recordUncaughtExceptions();
    try {
      throw 7;
    } catch (int) {
    }
    std::terminate();
  });
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
  EXPECT_EQ(progress.exception(), "");
}

TEST(Progress, CutsALongText) {
  Progress progress;
  statusOf([&] {
    progress.recordUncaughtExceptions();
    throw std::logic_error(std::string(5000, 'x'));
  });
  const std::string whole = "threw std::logic_error (\"" + std::string(5000, 'x');
  EXPECT_EQ(progress.exception(), whole.substr(0, 1023));
}

struct Strange {};

template <class Thrown>
std::string textOf(const Thrown& thrown) {
  try {
    throw thrown;
  } catch (...) {
    return currentExceptionText();
  }
}

TEST(CurrentExceptionText, ShowsTheTypeAndTheValueOfWhatIsThrown) {
  EXPECT_EQ(textOf(std::invalid_argument("why")), "threw std::invalid_argument (\"why\")");
  EXPECT_EQ(textOf("text"), "threw char const* (\"text\")");
  EXPECT_EQ(textOf(-3), "threw int (-3)");
  EXPECT_EQ(textOf(4000000000U), "threw unsigned int (4000000000)");
  EXPECT_EQ(textOf(Strange{}), "threw (anonymous namespace)::Strange");
}

}  // namespace
