#include <CoreServices/CoreServices.h>
#include <gtest/gtest.h>
#include <sys/sysctl.h>

#include <string>

#include "simulator/macos/Kernel.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

struct Answer {
  int status = 0;
  int value = 99;
  std::size_t size = sizeof(int);
};

Answer ask(const char* name, std::size_t room = sizeof(int)) {
  Answer answer;
  answer.size = room;
  answer.status = sysctlbyname(name, &answer.value, &answer.size, nullptr, 0);
  return answer;
}

TEST(Kernel, SaysWhetherTheProcessIsNative) {
  EXPECT_EQ(ask("sysctl.proc_native").value, 1);
  processIsNative() = 0;
  const Answer translated = ask("sysctl.proc_native");
  EXPECT_EQ(translated.status, 0);
  EXPECT_EQ(translated.value, 0);
  EXPECT_EQ(translated.size, sizeof(int));
}

TEST(Kernel, FailsAndWritesNothingIfItDoesNotHaveTheSetting) {
  processIsNative().reset();
  EXPECT_EQ(ask("sysctl.proc_native").status, -1);
  EXPECT_EQ(ask("sysctl.proc_native").value, 99);
  processIsNative() = 1;
  EXPECT_EQ(ask("sysctl.proc_translated").status, -1);
  EXPECT_EQ(ask("sysctl.proc_translated").value, 99);
}

TEST(Kernel, FailsIfTheAnswerDoesNotFit) {
  const Answer answer = ask("sysctl.proc_native", sizeof(int) - 1);
  EXPECT_EQ(answer.status, -1);
  EXPECT_EQ(answer.value, 99);
}

TEST(Debugger, GetsStringsOfTheLengthInTheirFirstByte) {
  testing_support::Machine machine;
  const unsigned char empty[] = "\0abc";
  const unsigned char some[] = "\3abcd";
  DebugStr(empty);
  DebugStr(some);
  const auto lines = machine.lines("debug");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0]["text"], "");
  EXPECT_EQ(lines[1]["text"], "abc");
}

}  // namespace
