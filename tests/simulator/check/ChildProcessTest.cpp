#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <string>

#include "simulator/check/ChildProcess.h"
#include "simulator/scenario/InputFile.h"

namespace {

using simulator::inChildProcess;
using simulator::Json;
using simulator::TemporaryFileError;
using testing::ThrowsMessage;

TEST(ChildProcess, ReturnsWhatTheWorkReturnsAndChangesNothingElse) {
  int changed = 0;
  const Json answer = inChildProcess([&] {
    changed = 1;
    return Json{{"process", getpid()}, {"list", {1, "two", nullptr}}};
  });
  EXPECT_NE(answer["process"], getpid());
  EXPECT_EQ(answer["list"], (Json{1, "two", nullptr}));
  EXPECT_EQ(changed, 0);
}

TEST(ChildProcess, ThrowsTheReasonIfTheWorkThrows) {
  EXPECT_THAT([] { inChildProcess([]() -> Json { throw std::logic_error("why"); }); },
              ThrowsMessage<std::runtime_error>("why"));
  EXPECT_THAT([] { inChildProcess([]() -> Json { throw 7; }); },
              ThrowsMessage<std::runtime_error>("threw an exception that is not a std::exception"));
}

TEST(ChildProcess, ThrowsTheErrorOfATemporaryFileAsOne) {
  EXPECT_THAT([] { inChildProcess([]() -> Json { throw TemporaryFileError("full"); }); },
              ThrowsMessage<TemporaryFileError>("full"));
}

TEST(ChildProcess, ThrowsHowTheChildEndedIfItReturnsNothing) {
  EXPECT_THAT([] { inChildProcess([]() -> Json { _exit(3); }); },
              ThrowsMessage<std::runtime_error>("ended the process (exit status 3)"));
  EXPECT_THAT([] { inChildProcess([]() -> Json { _exit(0); }); },
              ThrowsMessage<std::runtime_error>("ended the process (exit status 0)"));
  EXPECT_THAT(
      [] {
        inChildProcess([] {
          raise(SIGKILL);
          return Json();
        });
      },
      ThrowsMessage<std::runtime_error>("crashed: SIGKILL (Killed)"));
}

TEST(ChildProcess, PassesOnTextThatIsNotUtf8) {
  EXPECT_EQ(inChildProcess([] { return Json("a\xff"); }), Json("a\uFFFD"));
}

TEST(ChildProcess, MayRunChildrenOfItsOwn) {
  const Json answer = inChildProcess([] {
    return Json{inChildProcess([] { return Json(1); }), inChildProcess([] { return Json(2); })};
  });
  EXPECT_EQ(answer, (Json{1, 2}));
}

}  // namespace
