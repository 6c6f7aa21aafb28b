#include <gtest/gtest.h>

#include <string>

#include "hostactions/PreferencesFolder.h"
#include "tests/support/Machine.h"

using namespace testing_support;

TEST(PreferencesFolder, IsTheUsersFolderWithoutATrailingSlash) {
  const Machine machine;
  char path[1024];
  copyPreferencesFolderPath(path, sizeof path);
  EXPECT_EQ(machine.preferences().string(), path);
}

TEST(PreferencesFolder, IsEmptyIfThePathDoesNotFit) {
  const Machine machine;
  const std::string whole = machine.preferences().string();
  std::string path(whole.size() + 1, 'x');
  copyPreferencesFolderPath(path.data(), static_cast<CFIndex>(whole.size()));
  EXPECT_EQ(path[0], '\0');
  copyPreferencesFolderPath(path.data(), static_cast<CFIndex>(whole.size() + 1));
  EXPECT_EQ(path.c_str(), whole);
}

TEST(PreferencesFolder, IsEmptyIfThereIsNone) {
  char path[1024] = "x";
  copyPreferencesFolderPath(path, sizeof path);
  EXPECT_EQ(path[0], '\0');
}

TEST(PreferencesFolder, IsEmptyIfThePlatformRefusesAnyStepToItsPath) {
  const Machine machine;
  for (const char* call :
       {"Mac.CFURLCreateFromFSRef", "Mac.CFURLCopyFileSystemPath", "Mac.CFStringGetCString"}) {
    simulator::theFaults().add({call, -1});
    char path[1024] = "x";
    copyPreferencesFolderPath(path, sizeof path);
    EXPECT_EQ(path[0], '\0') << call;
    EXPECT_EQ(simulator::theFaults().lastFired(), call);
  }
}
