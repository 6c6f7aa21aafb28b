// The current tool and the size of its brush.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include <utility>

#include "hostactions/ActiveTool.h"
#include "tests/hostactions/RecordingHost.h"
#include "tests/hostactions/Tools.h"

using namespace simulator;
using namespace testing_support;

namespace {

const Json kToolReference = jsonOf(R"([
    {"form": "prop", "class": "Prpr", "key": "Tool"},
    {"form": "Enmr", "class": "capp", "enumType": "Ordn", "value": "Trgt"}])");

class ActiveTool : public testing::Test {
 protected:
  int numberOf(const std::string& tool) {
    theHost().setTool(tool);
    int number = -1;
    EXPECT_EQ(PlayeventGetActiveTool(&number, nullptr), 0) << tool;
    return number;
  }

  /// Sets the host's answer to the query for its tool.
  void setAnswer(const char* json) {
    theHost().setAnswer(kKeyTool, descriptorFromJson(jsonOf(json), theHost().typeIds()));
  }

  Machine machine_;
};

using ActiveToolBrushSize = ActiveTool;

}  // namespace

TEST_F(ActiveTool, HasTheNumberOfEachNameInTheTable) {
  for (const auto& [name, number] : kNumberedTools) EXPECT_EQ(numberOf(name), number) << name;
}

TEST_F(ActiveTool, Is62ForANameLongerOrShorterThanATableName) {
  for (const auto& [tool, number] : kNumberedTools) {
    const std::string name = tool;
    EXPECT_EQ(numberOf(name + "s"), kOtherTool);
    EXPECT_EQ(numberOf(name + " "), kOtherTool);
    EXPECT_EQ(numberOf(name.substr(0, name.size() - 1)), kOtherTool);
    EXPECT_EQ(numberOf(name.substr(0, name.size() - 4)), kOtherTool);
    EXPECT_EQ(numberOf(" " + name), kOtherTool);
  }
}

TEST_F(ActiveTool, ComparesNamesCaseSensitively) {
  EXPECT_EQ(numberOf("PaintbrushTool"), kOtherTool);
  EXPECT_EQ(numberOf("QUICKSELECTTOOL"), kOtherTool);
  EXPECT_EQ(numberOf("burninTool"), kOtherTool);
}

TEST_F(ActiveTool, Is60ForMagicWand61ForQuickSelectAnd62ForUnknownNames) {
  EXPECT_EQ(numberOf("magicWandTool"), 60);
  EXPECT_EQ(numberOf("quickSelectTool"), 61);
  EXPECT_EQ(numberOf("moveTool"), 62);
  EXPECT_EQ(numberOf("handTool"), 62);
}

TEST_F(ActiveTool, Is62ForANameLongerThanTheBufferOf50Bytes) {
  RecordingHost recorder;
  EXPECT_EQ(numberOf(std::string(60, 'x')), kOtherTool);
  EXPECT_EQ(recorder.typeNameSizes, std::vector<std::uint32_t>{50});
}

TEST_F(ActiveTool, ReturnsTheHostsIdentifierIfRequested) {
  theHost().setTool("smudgeTool");
  int number = 0;
  int hostToolID = 0;
  EXPECT_EQ(PlayeventGetActiveTool(&number, &hostToolID), 0);
  EXPECT_EQ(number, 53);
  EXPECT_EQ(static_cast<std::uint32_t>(hostToolID), theHost().typeIds().idOf("smudgeTool"));
}

TEST_F(ActiveTool, AsksForTheToolOfTheCurrentApplication) {
  numberOf("paintbrushTool");
  const auto gets = machine_.lines("get");
  ASSERT_EQ(gets.size(), 1U);
  EXPECT_EQ(gets[0]["reference"], kToolReference);
}

TEST_F(ActiveTool, Returns0AndLeavesBothOutputsUnchangedIfTheAnswerHasNoTool) {
  theHost().setTool("");
  int number = 7;
  int hostToolID = 8;
  EXPECT_EQ(PlayeventGetActiveTool(&number, &hostToolID), 0);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(hostToolID, 8);
}

TEST_F(ActiveTool, ReturnsTheHostsErrorIfTheToolIsNotAnEnumeration) {
  setAnswer(R"([{"key": "Tool", "type": "long", "value": 29}])");
  int number = 7;
  int hostToolID = 8;
  EXPECT_EQ(PlayeventGetActiveTool(&number, &hostToolID), -1703);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(hostToolID, 8);
}

TEST_F(ActiveTool, WritesANumberAndReturnsTheErrorIfTheConversionFails) {
  theHost().setTool("paintbrushTool");
  theFaults().add({"ActionControl.TypeIDToStringID", -108, 0, 1});
  int number = 7;
  int hostToolID = 8;
  EXPECT_EQ(PlayeventGetActiveTool(&number, &hostToolID), -108);
  EXPECT_EQ(number, kOtherTool) << "the buffer was left empty";
  EXPECT_EQ(static_cast<std::uint32_t>(hostToolID), theHost().typeIds().idOf("paintbrushTool"));
}

TEST_F(ActiveTool, WritesTheNumberOfTheBufferIfTheConversionFailsAfterFillingIt) {
  RecordingHost recorder;
  recorder.typeNameError = -1;
  theHost().setTool("pencilTool");
  int number = 7;
  EXPECT_EQ(PlayeventGetActiveTool(&number, nullptr), -1);
  EXPECT_EQ(number, 49);
}

TEST_F(ActiveToolBrushSize, IsTruncatedTowardsZero) {
  const std::pair<double, int> diameters[] = {{12.9, 12}, {0.5, 0},  {0.0, 0},     {1.0, 1},
                                              {-3.7, -3}, {-0.9, 0}, {2500, 2500}, {4999.99, 4999}};
  for (const auto& [diameter, expected] : diameters) {
    theHost().setBrush(diameter);
    int size = 77;
    EXPECT_EQ(PlayeventGetBrushSize(&size), 0);
    EXPECT_EQ(size, expected) << diameter;
  }
}

TEST_F(ActiveToolBrushSize, IgnoresTheUnit) {
  setAnswer(R"([{"key": "Tool", "type": "enum", "enumType": "$x", "value": "Trgt"},
                {"key": "CrnT", "type": "Objc", "class": "null", "value": [
                  {"key": "Brsh", "type": "Objc", "class": "null", "value": [
                    {"key": "Dmtr", "type": "UntF", "unit": "#Prc", "value": 41.5}]}]}])");
  int size = 0;
  EXPECT_EQ(PlayeventGetBrushSize(&size), 0);
  EXPECT_EQ(size, 41);
}

TEST_F(ActiveToolBrushSize, AsksForTheToolOfTheCurrentApplication) {
  int size = 0;
  EXPECT_EQ(PlayeventGetBrushSize(&size), 0);
  const auto gets = machine_.lines("get");
  ASSERT_EQ(gets.size(), 1U);
  EXPECT_EQ(gets[0]["reference"], kToolReference);
}

TEST_F(ActiveToolBrushSize, Returns0AndLeavesTheSizeUnchangedIfTheAnswerHasNoTool) {
  theHost().setTool("");
  int size = 7;
  EXPECT_EQ(PlayeventGetBrushSize(&size), 0);
  EXPECT_EQ(size, 7);
}

TEST_F(ActiveToolBrushSize, ReturnsTheErrorOfTheMissingKeyForAToolWithoutOptionsOrBrush) {
  int size = 7;
  theHost().setBrush(std::nullopt);
  EXPECT_EQ(PlayeventGetBrushSize(&size), -1715);
  setAnswer(R"([{"key": "Tool", "type": "enum", "enumType": "$x", "value": "Trgt"},
                {"key": "CrnT", "type": "Objc", "class": "null", "value": []}])");
  EXPECT_EQ(PlayeventGetBrushSize(&size), -1715);
  EXPECT_EQ(size, 7);
}

TEST_F(ActiveToolBrushSize, ReturnsTheHostsErrorIfTheDiameterIsNotAUnitFloat) {
  setAnswer(R"([{"key": "Tool", "type": "enum", "enumType": "$x", "value": "Trgt"},
                {"key": "CrnT", "type": "Objc", "class": "null", "value": [
                  {"key": "Brsh", "type": "Objc", "class": "null", "value": [
                    {"key": "Dmtr", "type": "doub", "value": 41.5}]}]}])");
  int size = 7;
  EXPECT_EQ(PlayeventGetBrushSize(&size), -1703);
  EXPECT_EQ(size, 7);
}

TEST_F(ActiveToolBrushSize, ReturnsTheHostsErrorIfTheToolIsNotAnEnumeration) {
  setAnswer(R"([{"key": "Tool", "type": "long", "value": 1},
                {"key": "CrnT", "type": "Objc", "class": "null", "value": [
                  {"key": "Brsh", "type": "Objc", "class": "null", "value": [
                    {"key": "Dmtr", "type": "UntF", "unit": "#Pxl", "value": 41.5}]}]}])");
  int size = 7;
  EXPECT_EQ(PlayeventGetBrushSize(&size), -1703);
  EXPECT_EQ(size, 7);
}
