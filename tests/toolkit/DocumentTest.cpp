// The programs of docs/toolkit.md do what the document says. CMakeLists.txt takes them out of it,
// and renames the entry point of each.
#include <SPInterf.h>
#include <SPMData.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "suites/Suites.h"
#include "tests/support/Machine.h"
#include "tests/support/Process.h"

int geometryMain();
int hostutilMain();
int actionfilesMain(int count, char** arguments);
extern "C" {
int suitesMain(const char* caller, const char* selector, void* message);
int hostactionsMain(const char* caller, const char* selector, void* message);
int hostwindowMain(const char* caller, const char* selector, void* message);
int codegenMain(const char* caller, const char* selector, void* message);
int readyMain(const char* caller, const char* selector, void* message);
}

namespace {

using namespace simulator;
using namespace testing_support;
using testing::HasSubstr;

using Plugin = int(const char* caller, const char* selector, void* message);

/// What the document says that the program prints.
std::string promised(const std::string& program) {
  return readFile(MRV_PROGRAMS "/" + program + ".expected");
}

/// Runs a program that succeeds; what it prints.
template <class Program>
std::string printed(const Program& program) {
  testing::internal::CaptureStdout();
  const int status = program();
  std::string output = testing::internal::GetCapturedStdout();
  EXPECT_EQ(status, 0);
  return output;
}

class DocumentPlugin : public testing::Test {
 protected:
  /// What a plug-in prints when the host calls it.
  static std::string printedBy(Plugin* plugin) {
    SPMessageData message = {0, theHost().plugIn(), nullptr, theHost().basicSuite()};
    std::string output =
        printed([&] { return plugin(kSPInterfaceCaller, kSPInterfaceAboutSelector, &message); });
    EXPECT_EQ(theHost().objectsOwned(), 0U);
    PIUSuitesRelease();
    return output;
  }

  Machine machine;
};

TEST(DocumentProgram, OfGeometryPrintsWhatIsSaid) {
  EXPECT_EQ(printed(geometryMain), promised("geometry"));
}

TEST(DocumentProgram, OfHostutilPrintsWhatIsSaid) {
  EXPECT_EQ(printed(hostutilMain), promised("hostutil"));
}

TEST(DocumentProgram, OfActionfilesPrintsWhatIsSaid) {
  std::string file = MRV_PROGRAMS "/Portraits.atn";
  char* arguments[] = {nullptr, file.data(), nullptr};
  EXPECT_EQ(printed([&] { return actionfilesMain(2, arguments); }), promised("actionfiles"));
}

TEST_F(DocumentPlugin, OfSuitesPrintsWhatIsSaid) {
  EXPECT_EQ(printedBy(suitesMain), promised("suites"));
}

TEST_F(DocumentPlugin, OfHostactionsPrintsWhatIsSaid) {
  EXPECT_EQ(printedBy(hostactionsMain), promised("hostactions"));
}

TEST_F(DocumentPlugin, OfHostwindowPrintsWhatIsSaid) {
  EXPECT_EQ(printedBy(hostwindowMain), promised("hostwindow"));
}

TEST_F(DocumentPlugin, OfCodegenPrintsWhatIsSaidAndWritesTheFile) {
  const TemporaryFolder folder;
  std::filesystem::current_path(folder.file(""));
  EXPECT_EQ(printedBy(codegenMain), promised("codegen"));
  EXPECT_THAT(readFile("played.txt"), HasSubstr("PlayeventSet("));
  std::filesystem::current_path("/");
}

TEST_F(DocumentPlugin, OfReadyTextPlaysTheRecordedStep) {
  ASSERT_NE(theHost().model().tool, "blurTool");
  EXPECT_EQ(printedBy(readyMain), promised("ready"));
  EXPECT_EQ(theHost().model().tool, "blurTool");
}

}  // namespace
