#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>
#include <system_error>
#include <vector>

#include "simulator/scenario/OutputCapture.h"

namespace {

using simulator::OutputCapture;
using testing::ElementsAre;
using testing::IsEmpty;

class CapturedOutput : public testing::Test {
 protected:
  auto taker() {
    return [this](const std::string& line) { lines_.push_back(line); };
  }

  std::vector<std::string> lines_;
};

TEST_F(CapturedOutput, IsPassedOnInWholeLinesUntilTheEnd) {
  OutputCapture capture;
  std::printf("one\n\ntw");
  capture.drain(taker());
  EXPECT_THAT(lines_, ElementsAre("one", ""));
  capture.drain(taker());
  std::printf("o\nthree");
  capture.drain(taker());
  EXPECT_THAT(lines_, ElementsAre("one", "", "two"));
  capture.finish(taker());
  EXPECT_THAT(lines_, ElementsAre("one", "", "two", "three"));
  capture.finish(taker());
  EXPECT_EQ(lines_.size(), 4U);
}

TEST_F(CapturedOutput, IncludesWhatIsWrittenWithoutStdio) {
  OutputCapture capture;
  std::printf("first ");
  std::fflush(stdout);
  ASSERT_EQ(write(STDOUT_FILENO, "second\n", 7), 7);
  std::printf("third\n");
  capture.finish(taker());
  EXPECT_THAT(lines_, ElementsAre("first second", "third"));
}

TEST_F(CapturedOutput, MayBeLong) {
  const std::string large(100'000, 'x');
  OutputCapture capture;
  std::printf("%s\n%s", large.c_str(), large.c_str());
  capture.finish(taker());
  EXPECT_THAT(lines_, ElementsAre(large, large));
}

TEST_F(CapturedOutput, GoesWhereItWentBeforeOnceTheCaptureEnds) {
  OutputCapture outer;
  {
    std::printf("before ");
    OutputCapture inner;
    std::printf("inside\n");
    inner.finish(taker());
    EXPECT_THAT(lines_, ElementsAre("inside"));
    std::printf("lost\n");
  }
  std::printf("after\n");
  outer.finish(taker());
  EXPECT_THAT(lines_, ElementsAre("inside", "before after"));
}

TEST_F(CapturedOutput, ReportsWhatCouldNotBeKept) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit whole = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &whole), 0);
  OutputCapture capture;
  const rlimit small = {.rlim_cur = 4, .rlim_max = whole.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  std::printf("1234567890\n");
  capture.drain(taker());
  setrlimit(RLIMIT_FSIZE, &whole);
  EXPECT_THAT(lines_, IsEmpty());
  try {
    capture.finish(taker());
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::file_too_large);
    EXPECT_THAT(error.what(), testing::StartsWith("what the plug-in prints: "));
  }
}

}  // namespace
