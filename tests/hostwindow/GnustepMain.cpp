// Runs the tests in a child process with an X server without a screen and a temporary folder of its
// own, so copies that run at the same time do not meet. Both go after the child has ended, also if
// it crashed; if this process is killed, the X server and the child end with it.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <vector>

#include "tests/support/Process.h"
#include "tests/support/XServer.h"

namespace {

/// Set in the child to the display of its X server.
constexpr const char* kDisplay = "MRV_TEST_DISPLAY";

int runTests(char** arguments) {
  const testing_support::TemporaryFolder folder;
  const testing_support::XServer server(MRV_XVFB, "1440x900x24");
  if (server.display().empty()) {
    std::cerr << MRV_XVFB << " gave no display\n";
    return 1;
  }
  setenv(kDisplay, server.display().c_str(), 1);
  setenv("DISPLAY", server.display().c_str(), 1);
  // Where GNUstep keeps its temporary files.
  setenv("TMP", folder.file("").c_str(), 1);
  testing_support::Child tests(SIGKILL, [arguments] { execv("/proc/self/exe", arguments); });
  return tests.wait();
}

}  // namespace

int main(int count, char** arguments) {
  if (std::getenv(kDisplay) == nullptr) {
    // GoogleTest removes its own arguments, and the child needs them.
    std::vector<char*> own(arguments, arguments + count + 1);
    int ownCount = count;
    testing::InitGoogleTest(&ownCount, own.data());
    if (!testing::GTEST_FLAG(list_tests)) return runTests(arguments);
  } else {
    testing::InitGoogleTest(&count, arguments);
  }
  return RUN_ALL_TESTS();
}
