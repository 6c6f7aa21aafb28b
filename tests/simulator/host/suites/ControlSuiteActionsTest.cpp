// Playing the recorded steps of an action.
#include <fmt/format.h>

#include <initializer_list>

#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

constexpr std::string_view kSelectEraser =
    R"([{"key":"null","type":"obj ","value":[{"form":"Clss","class":"$eraserTool"}]}])";
constexpr std::string_view kBrushOf40 = R"([
    {"key":"null","type":"obj ","value":[{"form":"Enmr","class":"Brsh","enumType":"Ordn","value":"Trgt"}]},
    {"key":"T   ","type":"Objc","class":"Brsh","value":[
        {"key":"$masterDiameter","type":"UntF","unit":"#Pxl","value":40}]}])";

class ControlSuiteActions : public HostTest {
 protected:
  ControlSuiteActions() { theHost().model().actionSets = {{1, "Set", {}}}; }

  RecordedStep step(DescriptorEventID event, std::string_view parameters) {
    return {.event = event,
            .parameters = descriptorFromJson(jsonOf(parameters), theHost().typeIds())};
  }
  std::uint32_t stringID(const char* name) { return theHost().typeIds().idOf(name); }

  /// A step that plays an action of the set.
  RecordedStep playOf(const std::string& name) { return step(kEventPlay, target(name)); }

  void addAction(const std::string& name, std::vector<RecordedStep> steps) {
    theHost().model().actionSets[0].actions.push_back({1, name});
    theHost().model().actionSets[0].actions.back().steps = std::move(steps);
  }

  OSErr play(const std::string& name) {
    lines_.clear();
    PIActionDescriptor result = nullptr;
    const OSErr error =
        control_->Play(&result, kEventPlay, descriptorOf(target(name)), plugInDialogSilent);
    if (error == 0) descriptors_->Free(result);
    return error;
  }

  /// Of every play line since the last play: action, step, event, result; the last is the play
  /// itself.
  std::vector<std::string> played() const {
    std::vector<std::string> texts;
    for (const Json& line : lines_) {
      if (line["what"] != "play") continue;
      const std::string place =
          line.contains("recorded")
              ? fmt::format("{} {}", line["recorded"]["action"].get<std::string>(),
                            line["recorded"]["step"].get<int>())
              : "-";
      texts.push_back(fmt::format("{}: {} {}", place, line["event"].get<std::string>(),
                                  line["result"].get<int>()));
    }
    return texts;
  }

 private:
  static std::string target(const std::string& name) {
    return R"([{"key":"null","type":"obj ","value":[{"form":"name","class":"Actn","value":")" +
           name + R"("},{"form":"name","class":"ASet","value":"Set"}]}])";
  }
};

using Texts = std::vector<std::string>;

TEST_F(ControlSuiteActions, ChangeTheModelStepByStep) {
  addAction("Both", {step(kEventSelect, kSelectEraser), step(kEventSet, kBrushOf40)});
  EXPECT_EQ(play("Both"), 0);
  EXPECT_EQ(theHost().tool(), "eraserTool");
  EXPECT_EQ(theHost().brush(), 40.0);
  EXPECT_EQ(played(), (Texts{"Both 1: slct 0", "Both 2: setd 0", "-: Ply  0"}));
}

TEST_F(ControlSuiteActions, AreLoggedWithWhatWasRecorded) {
  addAction("One", {step(kEventSelect, kSelectEraser)});
  theHost().model().actionSets[0].actions[0].steps[0].dialog = 1;
  EXPECT_EQ(play("One"), 0);
  EXPECT_EQ(lines_.at(0), Json({{"t", 0},
                                {"what", "play"},
                                {"event", "slct"},
                                {"descriptor", jsonOf(kSelectEraser)},
                                {"dialog", 1},
                                {"result", 0},
                                {"recorded", {{"set", "Set"}, {"action", "One"}, {"step", 1}}}}));
}

TEST_F(ControlSuiteActions, KnowEventsByTheirStringIDs) {
  addAction("Inner", {step(stringID("select"), kSelectEraser)});
  RecordedStep inner = playOf("Inner");
  inner.event = stringID("play");
  addAction("Outer", {inner, step(stringID("set"), kBrushOf40)});
  EXPECT_EQ(play("Outer"), 0);
  EXPECT_EQ(theHost().tool(), "eraserTool");
  EXPECT_EQ(theHost().brush(), 40.0);
}

TEST_F(ControlSuiteActions, GoOnAfterAStepThatTheModelDoesNotKnow) {
  RecordedStep stop{.event = fourCharCode("Stop")};
  addAction("Unknown", {stop, step(stringID("feather"), "[]"), step(kEventSelect, kSelectEraser)});
  EXPECT_EQ(play("Unknown"), 0);
  EXPECT_EQ(theHost().tool(), "eraserTool");
  const std::string feather = fmt::format("0x{:08x}", stringID("feather"));
  EXPECT_EQ(played(), (Texts{"Unknown 1: Stop -25920", "Unknown 2: " + feather + " -25920",
                             "Unknown 3: slct 0", "-: Ply  0"}));
  EXPECT_TRUE(lines_.at(0)["descriptor"].is_null()) << "the step has none";
}

TEST_F(ControlSuiteActions, EndWithTheErrorOfAStepThatFails) {
  addAction("Fails", {playOf("Missing"), step(kEventSelect, kSelectEraser)});
  EXPECT_EQ(play("Fails"), -1728);
  EXPECT_EQ(theHost().tool(), "paintbrushTool");
  EXPECT_EQ(played(), (Texts{"Fails 1: Ply  -1728", "-: Ply  -1728"}));
}

TEST_F(ControlSuiteActions, LeaveOutStepsThatAreNotEnabled) {
  addAction("Disabled", {step(kEventSelect, kSelectEraser)});
  theHost().model().actionSets[0].actions[0].steps[0].enabled = false;
  EXPECT_EQ(play("Disabled"), 0);
  EXPECT_EQ(theHost().tool(), "paintbrushTool");
  EXPECT_EQ(played(), (Texts{"-: Ply  0"}));
}

TEST_F(ControlSuiteActions, DoNotPlayTheActionThatPlaysThem) {
  addAction("A", {playOf("B"), step(kEventSelect, kSelectEraser)});
  addAction("B", {playOf("A"), playOf("C"), playOf("C")});
  addAction("C", {});
  EXPECT_EQ(play("A"), 0);
  EXPECT_EQ(theHost().tool(), "eraserTool");
  EXPECT_EQ(played(), (Texts{"B 1: Ply  -25920", "B 2: Ply  0", "B 3: Ply  0", "A 1: Ply  0",
                             "A 2: slct 0", "-: Ply  0"}));
}

TEST_F(ControlSuiteActions, PlayEachOtherToALimit) {
  for (int i = 0; i < 100; ++i) {
    addAction(fmt::format("{}", i), {playOf(fmt::format("{}", i + 1))});
  }
  addAction("100", {});
  EXPECT_EQ(play("0"), 0);
  EXPECT_EQ(played().front(), "63 1: Ply  -25920") << played().size();
}

}  // namespace
}  // namespace simulator
