#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "simulator/scenario/Interrupts.h"

namespace {

using namespace simulator;

using Handler = void (*)(int);

struct sigaction actionOf(int signal) {
  struct sigaction action = {};
  sigaction(signal, nullptr, &action);
  return action;
}

/// The signal of `Interrupted`; 0 if that is not thrown.
int thrownSignal() {
  try {
    throwIfInterrupted();
  } catch (const Interrupted& interrupted) {
    return interrupted.signal;
  }
  return 0;
}

class Interrupts : public testing::Test {
 protected:
  // Whoever started the tests may have ignored them, and then they stay ignored.
  Interrupts() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) std::signal(signal, SIG_DFL);
  }
  ~Interrupts() override {
    settleInterrupt();
    forgetInterrupts();
  }
};

TEST_F(Interrupts, AreThrownWhereTheyAreAskedForUntilTheyAreSettled) {
  noteInterrupts();
  EXPECT_EQ(thrownSignal(), 0);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    raise(signal);
    EXPECT_EQ(thrownSignal(), signal);
    EXPECT_EQ(thrownSignal(), signal);
    settleInterrupt();
    EXPECT_EQ(thrownSignal(), 0);
  }
}

TEST_F(Interrupts, EndASystemCallThatBlocks) {
  noteInterrupts();
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGALRM}) {
    EXPECT_EQ(actionOf(signal).sa_flags & SA_RESTART, 0) << signal;
  }
}

TEST_F(Interrupts, EndTheSystemCallThatBeginsAfterTheSignal) {
  noteInterrupts();
  raise(SIGTERM);
  EXPECT_GT(alarm(0), 0U) << "an alarm is set, which interrupts the call";
  raise(SIGALRM);
  EXPECT_GT(alarm(0), 0U) << "and the calls after it";
  settleInterrupt();
  raise(SIGTERM);
  settleInterrupt();
  EXPECT_EQ(alarm(0), 0U);
}

TEST_F(Interrupts, LeaveIgnoredSignalsIgnored) {
  std::signal(SIGHUP, SIG_IGN);
  noteInterrupts();
  EXPECT_EQ(actionOf(SIGHUP).sa_handler, SIG_IGN);
  raise(SIGHUP);
  EXPECT_EQ(thrownSignal(), 0);
}

TEST_F(Interrupts, LetWritesFailInsteadOfEndingTheProcess) {
  noteInterrupts();
  EXPECT_EQ(actionOf(SIGXFSZ).sa_handler, SIG_IGN);
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  close(ends[0]);
  EXPECT_EQ(write(ends[1], "x", 1), -1);
  EXPECT_EQ(errno, EPIPE);
  close(ends[1]);
}

TEST_F(Interrupts, AreTheSystemsAgainInAChildThatForgetsThem) {
  noteInterrupts();
  raise(SIGTERM);
  forgetInterrupts();
  EXPECT_EQ(alarm(0), 0U);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGALRM}) {
    EXPECT_EQ(actionOf(signal).sa_handler, Handler{SIG_DFL}) << signal;
  }
}

}  // namespace
