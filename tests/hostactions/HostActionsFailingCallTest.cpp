// Makes each host call of a function fail in turn. Every suite is released beforehand, so acquiring
// it is one of the calls. A refused suite must throw the host's code, any other error must be
// returned; outputs must stay unchanged; every object made must be freed once, in the function's
// order; and errors of freeing must be ignored.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <utility>

#include "hostactions/ActiveTool.h"
#include "hostactions/BrushSize.h"
#include "hostactions/DescriptorUtilities.h"
#include "hostactions/HostVersion.h"
#include "hostactions/PsUIBoss.h"
#include "hostactions/QueuedEvent.h"
#include "hostactions/ShortcutFile.h"
#include "tests/hostactions/RecordingHost.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr std::int32_t kError = -1234;

using Names = std::vector<std::string>;

bool isFree(const std::string& procedure) { return procedure.ends_with(".Free"); }
bool isAcquisition(const std::string& procedure) { return procedure == "Basic.AcquireSuite"; }

/// The expected result: 0 if the failed call was a free, which is ignored, else the error.
int errorOf(const Outcome& outcome) { return isFree(outcome.failed) ? 0 : kError; }

class HostActionsFailingCall : public testing::Test {
 protected:
  using Call = std::function<int()>;
  using Check = std::function<void(const Outcome&)>;

  /// Makes each host call of `call` fail in turn and returns the calls' names. `result` gives what
  /// the function must return if it does not throw, `order` the order of freeing.
  Names failEach(const Call& call, const Names& order,
                 const std::function<int(const Outcome&)>& result, const Check& check) {
    Names failed;
    recorder_.startOver();
    failEachHostCall(
        kError, [&] { return attempt(call); },
        [&](int, const Outcome& outcome) {
          SCOPED_TRACE("failed: " + outcome.failed);
          failed.push_back(outcome.failed);
          expectFailure(outcome, order, result);
          check(outcome);
          recorder_.startOver();
        });
    EXPECT_EQ(recorder_.freed, order) << "at last, with no failure";
    return failed;
  }

  Names failEach(const Call& call, const Names& order, const Check& check) {
    return failEach(call, order, errorOf, check);
  }

  void expectFailure(const Outcome& outcome, const Names& order,
                     const std::function<int(const Outcome&)>& result) {
    EXPECT_EQ(outcome.threw, isAcquisition(outcome.failed));
    if (outcome.threw) {
      EXPECT_EQ(outcome.thrown, static_cast<std::uint32_t>(kError));
    } else {
      EXPECT_EQ(outcome.result, result(outcome));
    }
    EXPECT_EQ(recorder_.freed, keepMade(order, recorder_.made));
  }

  /// Creates a descriptor to read from.
  PIActionDescriptor descriptor(const char* json) {
    return theHost().makeDescriptor(descriptorFromJson(jsonOf(json), theHost().typeIds()));
  }

  /// A check that `output` is written only if the failed call was a free.
  template <class T>
  Check untouched(T& output, T before) {
    return [&output, before](const Outcome& outcome) {
      EXPECT_EQ(output == before, !isFree(outcome.failed));
      output = before;
    };
  }

  Machine machine_;
  RecordingHost recorder_;
};

constexpr auto kAcquire = "Basic.AcquireSuite";

/// The calls of getting an application's property, including the check for its key.
const Names kGetProperty = {kAcquire,
                            "ActionReference.Make",
                            "ActionReference.PutProperty",
                            "ActionReference.PutEnumerated",
                            kAcquire,
                            "ActionControl.Get",
                            kAcquire,
                            "ActionDescriptor.HasKey"};

Names followedBy(Names calls, const Names& more) {
  calls.insert(calls.end(), more.begin(), more.end());
  return calls;
}

}  // namespace

TEST_F(HostActionsFailingCall, EndsTheVersionQuery) {
  const Names order = {"answer", "HstV", "reference"};
  int major = -7;
  int minor = -8;
  Names failed;
  recorder_.startOver();
  failEachHostCall(
      kError,
      [&] { return attempt([&] { return PSMajorVersion(&major, &minor) == 12 ? 0 : 99; }); },
      [&](int, const Outcome& outcome) {
        SCOPED_TRACE("failed: " + outcome.failed);
        const bool major0 = outcome.failed == "ActionDescriptor.GetInteger";
        const bool minor0 = major0 && failed.back() == outcome.failed;
        failed.push_back(outcome.failed);
        expectFailure(outcome, order, [&](const Outcome&) { return minor0 ? 0 : 99; });
        // Errors of reading a number are ignored and leave it 0.
        EXPECT_EQ(major, minor0 ? 12 : major0 ? 0 : -7);
        EXPECT_EQ(minor, minor0 ? 0 : major0 ? 1 : -8);
        recorder_.startOver();
      });
  EXPECT_EQ(failed, followedBy(kGetProperty,
                               {"ActionDescriptor.GetObject", "ActionDescriptor.HasKey",
                                "ActionDescriptor.GetInteger", "ActionDescriptor.GetInteger"}))
      << "a missing minor version ends the asking";
}

TEST_F(HostActionsFailingCall, IsIgnoredInTheVersionQueryIfItFrees) {
  theFaults().add({"ActionDescriptor.Free", kError, 0, 2});
  theFaults().add({"ActionReference.Free", kError, 0, 1});
  int major = 0;
  int minor = 0;
  EXPECT_EQ(PSMajorVersion(&major, &minor), 12);
  EXPECT_EQ(minor, 1);
  EXPECT_EQ(recorder_.freed, (Names{"answer", "HstV", "reference"}));
}

TEST_F(HostActionsFailingCall, MakesTheModalQueryReturnTrue) {
  theHost().setModal(0);
  const Names failed = failEach([] { return PSIsModal() ? 1 : 0; }, {},
                                [](const Outcome&) { return 1; }, [](const Outcome&) {});
  EXPECT_EQ(failed, (Names{kAcquire, "Property.GetSimple"}));
}

TEST_F(HostActionsFailingCall, EndsTheToolQuery) {
  int number = -1;
  int hostToolID = -2;
  const Names failed = failEach(
      [&] { return PlayeventGetActiveTool(&number, &hostToolID); }, {"reference", "answer"},
      [&](const Outcome& outcome) {
        const bool unnamed = outcome.failed == "ActionControl.TypeIDToStringID";
        const bool written = unnamed || isFree(outcome.failed);
        EXPECT_EQ(number, unnamed ? kOtherTool : written ? 29 : -1);
        EXPECT_EQ(hostToolID == -2, !written);
        number = -1;
        hostToolID = -2;
      });
  EXPECT_EQ(failed, followedBy(kGetProperty,
                               {"ActionDescriptor.GetEnumerated", "ActionControl.TypeIDToStringID",
                                "ActionReference.Free", "ActionDescriptor.Free"}));
}

TEST_F(HostActionsFailingCall, EndsTheBrushQuery) {
  int size = -1;
  const Names failed = failEach([&] { return PlayeventGetBrushSize(&size); },
                                {"reference", "answer", "CrnT", "Brsh"}, untouched(size, -1));
  EXPECT_EQ(failed, followedBy(kGetProperty,
                               {"ActionDescriptor.GetEnumerated", "ActionDescriptor.GetObject",
                                "ActionDescriptor.GetObject", "ActionDescriptor.GetUnitFloat",
                                "ActionReference.Free", "ActionDescriptor.Free",
                                "ActionDescriptor.Free", "ActionDescriptor.Free"}));
}

TEST_F(HostActionsFailingCall, MakesABrushSampleTypeNothingAndTheNextAskAgain) {
  InitBrushSize(nullptr);
  PsUIBoss::Instance();
  machine_.drain();
  const auto keysTyped = [&] {
    std::size_t keys = 0;
    for (const Json& line : machine_.drain()) keys += line["what"] == "posted" ? 1 : 0;
    return keys;
  };
  const Names failed = failEach(
      [] {
        AdjustBrushSize(501);
        return 0;
      },
      {"reference", "answer", "reference 2", "answer 2", "CrnT", "Brsh"},
      [](const Outcome&) { return 0; },
      [&](const Outcome& outcome) {
        EXPECT_EQ(keysTyped(), isFree(outcome.failed) ? 2U : 0U);
        if (isFree(outcome.failed)) ResetBrushSizeAccumulator();
      });
  EXPECT_EQ(failed.size(), 25U);
  EXPECT_EQ(keysTyped(), 2U);
  while (theEventManager().dispatchNext()) {
  }
}

TEST_F(HostActionsFailingCall, EndsThePlayOfAProperty) {
  char key[] = "hardness";
  const Names failed =
      failEach([&] { return PlayeventDynamicSetProperty(key, kUnitPercent, 50.0); },
               {"result", "descriptor", "reference", "descriptor 2"},
               [&](const Outcome& outcome) {
                 double& hardness = theHost().model().brush->hardness;
                 EXPECT_EQ(hardness, isFree(outcome.failed) ? 50.0 : 100.0);
                 hardness = 100.0;
               });
  EXPECT_EQ(failed, (Names{kAcquire, "ActionDescriptor.Make", kAcquire, "ActionReference.Make",
                           "ActionReference.PutEnumerated", "ActionDescriptor.PutReference",
                           "ActionDescriptor.Make", kAcquire, "ActionControl.StringIDToTypeID",
                           "ActionDescriptor.PutUnitFloat", "ActionDescriptor.PutObject",
                           "ActionControl.Play", "ActionDescriptor.Free", "ActionDescriptor.Free",
                           "ActionReference.Free", "ActionDescriptor.Free"}));
}

TEST_F(HostActionsFailingCall, EndsTheSelectionOfATool) {
  gActiveTool = theHost().typeIds().idOf("eraserTool");
  const Names failed = failEach(
      [] { return PlayeventSelectBrush(); }, {"result", "descriptor", "reference"},
      [](const Outcome& outcome) {
        EXPECT_EQ(theHost().tool(), isFree(outcome.failed) ? "eraserTool" : "paintbrushTool");
        theHost().setTool("paintbrushTool");
      });
  EXPECT_EQ(failed, (Names{kAcquire, "ActionDescriptor.Make", kAcquire, "ActionReference.Make",
                           "ActionReference.PutClass", "ActionDescriptor.PutReference", kAcquire,
                           "ActionControl.Play", "ActionDescriptor.Free", "ActionDescriptor.Free",
                           "ActionReference.Free"}));
}

TEST_F(HostActionsFailingCall, ClearsAQueuedRequestUnlessItThrows) {
  PsUIBoss::Instance();
  recorder_.startOver();
  const int tool = static_cast<int>(theHost().typeIds().idOf("eraserTool"));
  const auto play = [&] {
    PlayeventDynamicSetMasterDiameter(40.0, tool);
    return PlayQueuedEvent();
  };
  const int calls = failEachHostCall(
      kError, [&] { return attempt(play); },
      [&](int, const Outcome& outcome) {
        SCOPED_TRACE("failed: " + outcome.failed);
        EXPECT_EQ(outcome.threw, isAcquisition(outcome.failed));
        EXPECT_EQ(outcome.result, outcome.threw ? 0 : errorOf(outcome));
        EXPECT_EQ(IsPlayEventBusy(), outcome.threw);
        EXPECT_EQ(recorder_.freed.size(), recorder_.made.size());
        recorder_.startOver();
      });
  EXPECT_EQ(calls, 24);
  EXPECT_EQ(recorder_.freed, (Names{"result", "descriptor", "reference", "descriptor 2", "result 2",
                                    "descriptor 3", "reference 2"}));
}

TEST_F(HostActionsFailingCall, DoesNotPreventTheSelectionOfTheToolAfterASet) {
  PsUIBoss::Instance();
  recorder_.startOver();
  const int tool = static_cast<int>(theHost().typeIds().idOf("eraserTool"));
  PlayeventDynamicSetMasterDiameter(40.0, tool);
  theFaults().add({"ActionDescriptor.PutUnitFloat", kError, 0, 1});
  EXPECT_EQ(PlayQueuedEvent(), kError);
  EXPECT_EQ(theHost().tool(), "eraserTool");
  EXPECT_EQ(recorder_.freed, (Names{"descriptor", "reference", "descriptor 2", "result",
                                    "descriptor 3", "reference 2"}));
}

TEST_F(HostActionsFailingCall, ThrowsOrIsIgnoredAtTheFirstUseOfPsUIBoss) {
  // A version that cannot be read counts as version 0, so no error is returned.
  const Names failed = failEach([] { return PsUIBoss::Instance().ShortcutKey(); }, {},
                                [](const Outcome&) { return 0; }, [](const Outcome&) {});
  EXPECT_EQ(failed.front(), kAcquire);
}

TEST_F(HostActionsFailingCall, MakesTheShortcutQueryFindNoFile) {
  std::filesystem::create_directories(machine_.preferences() / settingsFolderOf(12, 1));
  const auto file = machine_.preferences() / settingsFolderOf(12, 1) / "Keyboard Shortcuts.psp";
  std::FILE* stream = std::fopen(file.c_str(), "wb");
  ASSERT_NE(stream, nullptr);
  const std::string bytes = shortcutsFile({{.plugIn = "MrvPhotoshop", .key = 'k'}}, 0);
  std::fwrite(bytes.data(), 1, bytes.size(), stream);
  std::fclose(stream);
  Shortcut shortcut;
  theFaults().add({"ActionControl.Get", kError, 0, 1});
  EXPECT_FALSE(readPluginShortcut(shortcut));
  EXPECT_EQ(recorder_.freed, Names{"reference"});
  EXPECT_TRUE(readPluginShortcut(shortcut)) << "the next call asks again";
  EXPECT_EQ(shortcut.key, 'k');
}

TEST_F(HostActionsFailingCall, EndsPlayByName) {
  const Names failed = failEach([] { return PIUActionsPlayByName("Default Actions", "Vignette"); },
                                {"reference", "descriptor", "result"}, [](const Outcome&) {});
  EXPECT_EQ(failed.size(), 13U);
}

TEST_F(HostActionsFailingCall, EndsTheReadOfAnActionsName) {
  char name[32] = "x";
  std::uint32_t length = 99;
  const Check check = [&](const Outcome& outcome) {
    const bool unread = outcome.failed == "ActionDescriptor.GetString";
    EXPECT_STREQ(name, isFree(outcome.failed) ? "Vignette" : "x");
    EXPECT_EQ(length, unread || isFree(outcome.failed) ? 8U : 99U);
    std::strcpy(name, "x");
    length = 99;
  };
  const Names common = {kAcquire,
                        "ActionDescriptor.HasKey",
                        "ActionDescriptor.GetStringLength",
                        "ActionDescriptor.GetString",
                        "ActionReference.Free",
                        "ActionDescriptor.Free"};
  const Names byIndex =
      failEach([&] { return PIUActionsGetName(std::uint32_t{1}, 1, name, &length); },
               {"reference", "answer"}, check);
  EXPECT_EQ(byIndex, followedBy({kAcquire, "ActionReference.Make", "ActionReference.PutIndex",
                                 "ActionReference.PutIndex", kAcquire, "ActionControl.Get"},
                                common));
  std::strcpy(name, "x");
  length = 99;
  const Names byName =
      failEach([&] { return PIUActionsGetName("Default Actions", 1, name, &length); },
               {"reference", "answer"}, check);
  EXPECT_EQ(byName, followedBy({kAcquire, "ActionReference.Make", "ActionReference.PutIndex",
                                "ActionReference.PutName", kAcquire, "ActionControl.Get"},
                               common));
}

TEST_F(HostActionsFailingCall, EndsEveryPropertyRead) {
  constexpr std::uint32_t kTitle = fourCharCode("LyrI");
  constexpr std::uint32_t kDocumentID = fourCharCode("DocI");
  std::int32_t value = -1;
  Boolean background = 7;
  const Names order = {"reference", "answer"};
  const std::function<int()> reads[] = {
      [&] { return PIUGetInfo(kClassDocument, kDocumentID, &value, nullptr); },
      [&] { return PIUGetInfoByIndex(1, kClassDocument, kDocumentID, &value, nullptr); },
      [&] { return PIUGetInfoByID(1, kClassDocument, kDocumentID, &value, nullptr); },
      [&] {
        return PIUGetInfoByIndexIndex(1, 1, kClassLayer, kClassDocument, kTitle, &value, nullptr);
      },
      [&] { return PIUGetInfoByIDID(1, 1, kClassLayer, kClassDocument, kTitle, &value, nullptr); }};
  for (const auto& read : reads) {
    value = -1;
    const Names failed = failEach(read, order, untouched(value, std::int32_t{-1}));
    EXPECT_GE(failed.size(), 12U);
    EXPECT_EQ(value, 1);
  }
  const Names failed =
      failEach([&] { return PIUGetBackgroundInfo(kKeyBackground, &background, nullptr); }, order,
               untouched(background, Boolean{7}));
  EXPECT_EQ(failed,
            followedBy(kGetProperty, {"ActionDescriptor.GetType", "ActionDescriptor.GetBoolean",
                                      "ActionReference.Free", "ActionDescriptor.Free"}));
}

TEST_F(HostActionsFailingCall, EndsTheReadOfEachItemType) {
  const std::pair<const char*, const char*> items[] = {
      {"GetInteger", R"([{"key": "Test", "type": "long", "value": 1}])"},
      {"GetInteger64", R"([{"key": "Test", "type": "comp", "value": 1}])"},
      {"GetFloat", R"([{"key": "Test", "type": "doub", "value": 1}])"},
      {"GetBoolean", R"([{"key": "Test", "type": "bool", "value": true}])"},
      {"GetClass", R"([{"key": "Test", "type": "type", "value": "RGBM"}])"},
      {"GetClass", R"([{"key": "Test", "type": "GlbC", "value": "RGBM"}])"},
      {"GetUnitFloat", R"([{"key": "Test", "type": "UntF", "unit": "#Pxl", "value": 1}])"},
      {"GetEnumerated",
       R"([{"key": "Test", "type": "enum", "enumType": "Ordn", "value": "Trgt"}])"}};
  for (const auto& [procedure, json] : items) {
    const PIActionDescriptor given = descriptor(json);
    std::uint64_t value = 0x5555555555555555;
    std::uint32_t extra = 99;
    const Names failed = failEach(
        [&] { return PIUGetSingleItemFromDescriptor(given, fourCharCode("Test"), &value, &extra); },
        {},
        [&](const Outcome&) {
          EXPECT_EQ(value, 0x5555555555555555U);
          EXPECT_EQ(extra, 99U);
        });
    EXPECT_EQ(failed, (Names{kAcquire, "ActionDescriptor.HasKey", "ActionDescriptor.GetType",
                             std::string("ActionDescriptor.") + procedure}));
  }
}

TEST_F(HostActionsFailingCall, MakesTheReadOfAnObjectReturnNoObject) {
  const std::pair<const char*, const char*> items[] = {
      {"GetObject", R"([{"key": "Test", "type": "Objc", "class": "null", "value": []}])"},
      {"GetGlobalObject", R"([{"key": "Test", "type": "GlbO", "class": "null", "value": []}])"},
      {"GetList", R"([{"key": "Test", "type": "VlLs", "value": []}])"},
      {"GetReference", R"([{"key": "Test", "type": "obj ", "value": []}])"},
      {"GetAlias", R"([{"key": "Test", "type": "alis", "value": "/a"}])"},
      {"GetAlias", R"([{"key": "Test", "type": "Pth ", "value": "/a"}])"}};
  for (const auto& [procedure, json] : items) {
    const PIActionDescriptor given = descriptor(json);
    for (const char* failing : {"HasKey", "GetType", procedure}) {
      theFaults().add({std::string("ActionDescriptor.") + failing, kError, 0, 1});
      void* value = nullptr;
      std::uint32_t extra = 99;
      EXPECT_EQ(PIUGetSingleItemFromDescriptor(given, fourCharCode("Test"), &value, &extra),
                kError);
      EXPECT_EQ(value, nullptr) << procedure;
      EXPECT_EQ(extra, 99U) << procedure;
      EXPECT_EQ(theHost().objectsOwned(), 0U);
    }
  }
}

TEST_F(HostActionsFailingCall, EndsTheReadOfAText) {
  const PIActionDescriptor given =
      descriptor(R"([{"key": "Test", "type": "TEXT", "value": "abc"}])");
  char text[8] = "x";
  std::uint32_t length = 7;
  const Names failed = failEach(
      [&] { return PIUGetSingleItemFromDescriptor(given, fourCharCode("Test"), text, &length); },
      {},
      [&](const Outcome& outcome) {
        EXPECT_STREQ(text, "x");
        EXPECT_EQ(length, outcome.failed == "ActionDescriptor.GetString" ? 3U : 7U);
        length = 7;
      });
  EXPECT_EQ(failed, (Names{kAcquire, "ActionDescriptor.HasKey", "ActionDescriptor.GetType",
                           "ActionDescriptor.GetStringLength", "ActionDescriptor.GetString"}));
}

TEST_F(HostActionsFailingCall, EndsTheReadOfAnErrorString) {
  const PIActionDescriptor given =
      descriptor(R"([{"key": "Msge", "type": "TEXT", "value": "abc"}])");
  char text[8] = "x";
  const Names failed = failEach([&] { return PIUGetErrorStringFromDescriptor(given, text, 8); }, {},
                                [&](const Outcome&) { EXPECT_STREQ(text, "x"); });
  EXPECT_EQ(failed, (Names{kAcquire, "ActionDescriptor.HasKey", "ActionDescriptor.GetStringLength",
                           "ActionDescriptor.GetString"}));
}

TEST_F(HostActionsFailingCall, EndsTheCheckOfAPlayResult) {
  const PIActionDescriptor given = descriptor("[]");
  const Names failed =
      failEach([&] { return PIUCheckPlayResult(given); }, {}, [](const Outcome&) {});
  EXPECT_EQ(failed, (Names{kAcquire, "ActionDescriptor.HasKey"}));
}
