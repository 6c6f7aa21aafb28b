// Calls while the host refuses a suite, once or permanently.
#include <HostTerms.h>
#include <PIProperties.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "hostactions/ActiveTool.h"
#include "hostactions/BrushSize.h"
#include "hostactions/DescriptorUtilities.h"
#include "hostactions/HostVersion.h"
#include "hostactions/PsUIBoss.h"
#include "hostactions/QueuedEvent.h"
#include "hostactions/ShortcutFile.h"
#include "suites/Suites.h"
#include "tests/hostactions/RecordingHost.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr std::int32_t kRefused = kSPSuiteNotFoundError;
constexpr int kForGood = 1000000;

/// A function of hostactions/ and the suites that it needs.
struct Function {
  const char* name;
  std::function<int()> call;
  std::vector<std::string> suites;
};

/// What the functions write to.
struct Answers {
  int number = 0;
  char text[64];
  std::uint32_t length = 0;
  std::int32_t value = 0;
} answers;
char hardness[] = "hardness";

const std::vector<std::string> kActionSuites = {kPSActionReferenceSuite, kPSActionControlSuite,
                                                kPSActionDescriptorSuite};

int playRequest() {
  gActiveTool = theHost().typeIds().idOf("eraserTool");
  gDoubleValue = 20.0;
  gPlayFunction = kPlayMasterDiameter;
  return PlayQueuedEvent();
}

int askWhetherModal() {
  PSIsModal();
  return 0;
}

int takeSample() {
  ResetBrushSizeAccumulator();
  AdjustBrushSize(100);
  return 0;
}

std::vector<Function> functions() {
  constexpr std::uint32_t kDocumentID = fourCharCode("DocI");
  constexpr std::uint32_t kLayerID = fourCharCode("LyrI");
  return {
      {"PSIsModal", askWhetherModal, {kPSPropertySuite}},
      {"PlayeventGetActiveTool",
       [] { return PlayeventGetActiveTool(&answers.number, &answers.number); }, kActionSuites},
      {"PlayeventGetBrushSize", [] { return PlayeventGetBrushSize(&answers.number); },
       kActionSuites},
      {"AdjustBrushSize", takeSample, kActionSuites},
      {"PlayQueuedEvent", playRequest, kActionSuites},
      {"PlayeventDynamicSetProperty",
       [] { return PlayeventDynamicSetProperty(hardness, kUnitPercent, 10.0); }, kActionSuites},
      {"PlayeventSelectBrush", [] { return PlayeventSelectBrush(); }, kActionSuites},
      {"PIUActionsPlayByName", [] { return PIUActionsPlayByName("Default Actions", "Vignette"); },
       kActionSuites},
      {"PIUActionsGetName by indexes",
       [] { return PIUActionsGetName(std::uint32_t{1}, 1, answers.text, &answers.length); },
       kActionSuites},
      {"PIUActionsGetName by name",
       [] { return PIUActionsGetName("Default Actions", 1, answers.text, &answers.length); },
       kActionSuites},
      {"PIUGetInfo",
       [] { return PIUGetInfo(kClassDocument, kDocumentID, &answers.value, nullptr); },
       kActionSuites},
      {"PIUGetInfoByIndex",
       [] { return PIUGetInfoByIndex(1, kClassDocument, kDocumentID, &answers.value, nullptr); },
       kActionSuites},
      {"PIUGetInfoByID",
       [] { return PIUGetInfoByID(1, kClassDocument, kDocumentID, &answers.value, nullptr); },
       kActionSuites},
      {"PIUGetInfoByIndexIndex",
       [] {
         return PIUGetInfoByIndexIndex(1, 1, kClassLayer, kClassDocument, kLayerID, &answers.value,
                                       nullptr);
       },
       kActionSuites},
      {"PIUGetInfoByIDID",
       [] {
         return PIUGetInfoByIDID(1, 1, kClassLayer, kClassDocument, kLayerID, &answers.value,
                                 nullptr);
       },
       kActionSuites},
      {"PIUGetBackgroundInfo",
       [] { return PIUGetBackgroundInfo(kKeyBackground, &answers.value, nullptr); }, kActionSuites},
  };
}

class HostActionsRefusedSuite : public testing::Test {
 protected:
  HostActionsRefusedSuite() { gActiveTool = theHost().typeIds().idOf("eraserTool"); }
  ~HostActionsRefusedSuite() override {
    while (theEventManager().dispatchNext()) {
    }
  }

  void expectThrown(const std::function<int()>& call) {
    const Outcome outcome = attempt(call);
    EXPECT_TRUE(outcome.threw);
    EXPECT_EQ(outcome.thrown, static_cast<std::uint32_t>(kRefused));
  }

  /// Checks that only descriptors leaked, which cannot be freed while their suite is refused, and
  /// returns their number.
  std::ptrdiff_t expectOnlyAnswersLeft() {
    for (const std::string& name : recorder_.made) {
      const auto& freed = recorder_.freed;
      const bool left = std::find(freed.begin(), freed.end(), name) == freed.end();
      EXPECT_TRUE(!left || name.starts_with("answer")) << name;
    }
    return std::ssize(recorder_.made) - std::ssize(recorder_.freed);
  }

  Machine machine_;
  RecordingHost recorder_;
};

}  // namespace

TEST_F(HostActionsRefusedSuite, ThrowsOnceAndLeaksNothingAndTheNextCallSucceeds) {
  PsUIBoss::Instance();
  for (const Function& function : functions()) {
    for (const std::string& suite : function.suites) {
      SCOPED_TRACE(std::string(function.name) + " without " + suite);
      recorder_.startOver();
      recorder_.refuse(suite, kRefused, 1);
      expectThrown(function.call);
      EXPECT_EQ(theHost().objectsOwned(), 0U);
      EXPECT_EQ(recorder_.made.size(), recorder_.freed.size());
      EXPECT_EQ(function.call(), 0);
    }
  }
}

TEST_F(HostActionsRefusedSuite, ThrowsTheHostsCodeAtEachCall) {
  PsUIBoss::Instance();
  std::ptrdiff_t left = 0;
  for (const Function& function : functions()) {
    for (const std::string& suite : function.suites) {
      SCOPED_TRACE(std::string(function.name) + " without " + suite);
      recorder_.startOver();
      recorder_.refuse(suite, kRefused, kForGood);
      expectThrown(function.call);
      expectThrown(function.call);
      left += expectOnlyAnswersLeft();
      recorder_.refuse(suite, 0, 0);
    }
  }
  EXPECT_EQ(left, 22) << "eleven functions, each called twice, have an answer to free";
  machine_.expectMisuses(testing::ElementsAreArray(
      std::vector(static_cast<std::size_t>(left), testing::StartsWith("leaked: descriptor "))));
}

TEST_F(HostActionsRefusedSuite, LeaksNothingIfItIsTheReferenceOrControlSuite) {
  PsUIBoss::Instance();
  for (const Function& function : functions()) {
    for (const std::string suite : {kPSActionReferenceSuite, kPSActionControlSuite}) {
      SCOPED_TRACE(std::string(function.name) + " without " + suite);
      recorder_.startOver();
      recorder_.refuse(suite, kRefused, kForGood);
      attempt(function.call);
      EXPECT_EQ(theHost().objectsOwned(), 0U);
    }
  }
}

TEST_F(HostActionsRefusedSuite, ThrowsFromTheFirstUseOfPsUIBoss) {
  for (const std::string& suite : kActionSuites) {
    recorder_.startOver();
    recorder_.refuse(suite, kRefused, 1);
    expectThrown([] { return PsUIBoss::Instance().ShortcutKey(); });
    EXPECT_EQ(theHost().objectsOwned(), 0U) << suite;
  }
  EXPECT_EQ(PsUIBoss::Instance().ShortcutKey(), 0);
}

TEST_F(HostActionsRefusedSuite, ThrowsFromTheVersionQuery) {
  int major = -1;
  int minor = -1;
  for (const std::string& suite : kActionSuites) {
    recorder_.startOver();
    recorder_.refuse(suite, kRefused, 1);
    expectThrown([&] { return PSMajorVersion(&major, &minor); });
    EXPECT_EQ(major, -1);
    EXPECT_EQ(minor, -1);
    EXPECT_EQ(theHost().objectsOwned(), 0U) << suite;
  }
  EXPECT_EQ(PSMajorVersion(&major, &minor), 12);
}

TEST_F(HostActionsRefusedSuite, ThrowsFromTheShortcutQuery) {
  Shortcut shortcut;
  recorder_.refuse(kPSActionControlSuite, kRefused, 1);
  expectThrown([&] { return readPluginShortcut(shortcut) ? 1 : 0; });
  EXPECT_EQ(shortcut.key, 0);
  EXPECT_EQ(shortcut.modifier, 0);
}

TEST_F(HostActionsRefusedSuite, ThrowsFromReadsOfAGivenDescriptor) {
  const PIActionDescriptor given = theHost().makeDescriptor(std::make_shared<Container>());
  for (const int times : {1, kForGood}) {
    recorder_.startOver();
    recorder_.refuse(kPSActionDescriptorSuite, kRefused, times);
    expectThrown([&] { return PIUGetSingleItemFromDescriptor(given, 1, &answers.value, nullptr); });
    recorder_.refuse(kPSActionDescriptorSuite, kRefused, times);
    expectThrown([&] { return PIUGetErrorStringFromDescriptor(given, answers.text, 10); });
    recorder_.refuse(kPSActionDescriptorSuite, kRefused, times);
    expectThrown([&] { return PIUCheckPlayResult(given); });
  }
  recorder_.refuse(kPSActionDescriptorSuite, 0, 0);
  EXPECT_EQ(PIUCheckPlayResult(given), 0);
}

TEST_F(HostActionsRefusedSuite, GivesTheParameterErrorIfThereIsNoBasicSuite) {
  PsUIBoss::Instance();
  PIUSuitesRelease();
  SPBasicSuite* const basic = sSPBasic;
  sSPBasic = nullptr;
  for (const Function& function : functions()) {
    const Outcome outcome = attempt(function.call);
    EXPECT_TRUE(outcome.threw) << function.name;
    EXPECT_EQ(outcome.thrown, 0x5061726DU) << function.name;
  }
  sSPBasic = basic;
}
