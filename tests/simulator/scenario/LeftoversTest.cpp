// What the guard removes, and when. Each test that lets a process end waits for the guard, which
// then is this process's own child.
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>

#include "simulator/scenario/Leftovers.h"
#include "tests/support/Process.h"

namespace {

using simulator::Leftovers;

class LeftoversList : public testing::Test {
 protected:
  LeftoversList() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

  std::string file(const std::string& name) const {
    testing_support::writeFile(folder_.file(name), "x");
    return folder_.file(name);
  }

  std::string folder(const std::string& name) const {
    std::filesystem::create_directories(folder_.file(name) + "/inner");
    testing_support::writeFile(folder_.file(name) + "/inner/file", "x");
    return folder_.file(name);
  }

  static bool exists(const std::string& path) { return std::filesystem::exists(path); }

  /// Runs `work` in a child process, and waits for it and for the guard that it started.
  static void inProcess(const std::function<void()>& work) {
    if (fork() == 0) {
      work();
      _exit(0);
    }
    while (waitpid(-1, nullptr, 0) > 0) {
    }
  }

  testing_support::TemporaryFolder folder_;
};

TEST_F(LeftoversList, IsRemovedIfTheProcessIsKilled) {
  const std::string listed = folder("listed");
  const std::string single = file("single");
  const std::string forgotten = file("forgotten");
  inProcess([&] {
    Leftovers leftovers;
    leftovers.guard();
    leftovers.add(listed);
    leftovers.add(forgotten);
    leftovers.add(single);
    leftovers.forget(forgotten);
    kill(getpid(), SIGKILL);
  });
  EXPECT_FALSE(exists(listed));
  EXPECT_FALSE(exists(single));
  EXPECT_TRUE(exists(forgotten));
}

TEST_F(LeftoversList, IsRemovedWhenItIsFinished) {
  const std::string listed = folder("listed");
  Leftovers leftovers;
  leftovers.guard();
  leftovers.add(listed);
  leftovers.add(folder_.file("never made"));
  EXPECT_GT(leftovers.process(), 0);
  EXPECT_TRUE(exists(listed));
  leftovers.finish();
  EXPECT_FALSE(exists(listed));
  EXPECT_EQ(leftovers.process(), 0);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "the guard has been waited for";
}

TEST_F(LeftoversList, StartsAgainAfterItWasFinished) {
  Leftovers leftovers;
  leftovers.guard();
  leftovers.add(file("first"));
  leftovers.finish();
  const std::string second = file("second");
  leftovers.add(second);
  leftovers.finish();
  EXPECT_FALSE(exists(second));
}

TEST_F(LeftoversList, HoldsMorePathsThanAPipeTakesAtATime) {
  constexpr int kFiles = 1000;  // about 100 bytes each
  const std::string longName(60, 'n');
  Leftovers leftovers;
  leftovers.guard();
  for (int i = 0; i < kFiles; ++i) {
    const std::string path = file(longName + std::to_string(i));
    leftovers.add(path);
    if (i % 2 == 1) leftovers.forget(path);
  }
  leftovers.finish();
  for (int i = 0; i < kFiles; ++i) {
    EXPECT_EQ(exists(folder_.file(longName + std::to_string(i))), i % 2 == 1) << i;
  }
}

TEST_F(LeftoversList, IsNotKeptUntilItIsAskedFor) {
  const std::string kept = file("kept");
  inProcess([&] {
    Leftovers leftovers;
    leftovers.add(kept);
    if (leftovers.process() != 0) std::filesystem::remove(kept);
    leftovers.forget(kept);
    leftovers.finish();
  });
  EXPECT_TRUE(exists(kept));
}

TEST_F(LeftoversList, IsTheParentsAloneOnceAChildHasLeftIt) {
  const std::string parents = file("parents");
  const std::string childs = file("childs");
  Leftovers leftovers;
  leftovers.guard();
  leftovers.add(parents);
  const pid_t child = fork();
  if (child == 0) {
    leftovers.leaveToParent();
    leftovers.forget(parents);
    leftovers.add(childs);
    leftovers.finish();
    _exit(leftovers.process() == 0 ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(exists(parents)) << "the child's end removes nothing";
  leftovers.finish();
  EXPECT_FALSE(exists(parents));
  EXPECT_TRUE(exists(childs));
}

}  // namespace
