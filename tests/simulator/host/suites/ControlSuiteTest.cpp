#include <array>
#include <limits>

#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

class ControlSuite : public HostTest {
 protected:
  /// The answer to a get as JSON, or its error code.
  Json get(std::string_view reference) {
    PIActionDescriptor answer = nullptr;
    const OSErr error = control_->Get(&answer, referenceOf(reference));
    if (error != 0) return error;
    Json json = jsonOf(textOf(answer));
    descriptors_->Free(answer);
    return json;
  }

  /// The value of one property.
  Json property(std::string_view key, std::string_view owner) {
    const Json answer = get(R"([{"form": "prop", "class": "Prpr", "key": ")" + std::string(key) +
                            R"("}, )" + std::string(owner) + "]");
    return answer.is_array() ? answer.at(0).at("value") : answer;
  }

  OSErr play(DescriptorEventID event, std::string_view parameters) {
    PIActionDescriptor result = nullptr;
    const OSErr error =
        control_->Play(&result, event, descriptorOf(parameters), plugInDialogSilent);
    if (error == 0) {
      played_ = textOf(result);
      descriptors_->Free(result);
    }
    return error;
  }

  std::string played_;
};

constexpr std::string_view kApp =
    R"({"form":"Enmr","class":"capp","enumType":"Ordn","value":"Trgt"})";

TEST_F(ControlSuite, AnswersTheVersion) {
  EXPECT_EQ(property("HstV", kApp).dump(),
            R"([{"key":"VrsM","type":"long","value":12},{"key":"VrsN","type":"long","value":1}])");
  theHost().setVersion({{0, 7}});
  EXPECT_EQ(property("HstV", kApp)[0]["value"], 0);
}

TEST_F(ControlSuite, ReportsAMissingParameterIfTheHostHasNoVersion) {
  theHost().setVersion(std::nullopt);
  EXPECT_EQ(property("HstV", kApp), -1715);
}

TEST_F(ControlSuite, AnswersTheToolWithItsBrush) {
  theHost().setTool("eraserTool");
  theHost().setBrush(12.9);
  const Json answer =
      get(R"([{"form":"prop","class":"Prpr","key":"Tool"},)" + std::string(kApp) + "]");
  EXPECT_EQ(answer[0].dump(),
            R"({"key":"Tool","type":"enum","enumType":"$eraserTool","value":"Trgt"})");
  EXPECT_EQ(answer[1]["key"], "CrnT");
  EXPECT_EQ(answer[1]["value"][1]["value"][0].dump(),
            R"({"key":"Dmtr","type":"UntF","unit":"#Pxl","value":12.9})");
}

TEST_F(ControlSuite, LeavesTheBrushOutOfTheOptionsOfAToolWithoutOne) {
  theHost().setBrush(std::nullopt);
  const Json answer =
      get(R"([{"form":"prop","class":"Prpr","key":"Tool"},)" + std::string(kApp) + "]");
  EXPECT_EQ(answer[1]["key"], "CrnT");
  EXPECT_THAT(answer[1]["value"].dump(), testing::Not(testing::HasSubstr("Brsh")));
}

TEST_F(ControlSuite, AnswersAGetOfTheToolEvenIfThereIsNone) {
  theHost().setTool("");
  EXPECT_EQ(get(R"([{"form":"prop","class":"Prpr","key":"Tool"},)" + std::string(kApp) + "]"),
            Json::array());
}

TEST_F(ControlSuite, ReturnsAGivenAnswerInPlaceOfTheModels) {
  const Json given = jsonOf(R"([{"key": "VrsM", "type": "long", "value": 3}])");
  theHost().setAnswer(kKeyHostVersion, descriptorFromJson(given, theHost().typeIds()));
  EXPECT_EQ(get(R"([{"form":"prop","class":"Prpr","key":"HstV"},)" + std::string(kApp) + "]"),
            given);
  theHost().setAnswer(kKeyHostVersion, nullptr);
  EXPECT_EQ(property("HstV", kApp)[0]["value"], 12);
}

TEST_F(ControlSuite, FindsObjectsByEveryForm) {
  EXPECT_EQ(property("Ttl ", R"({"form":"indx","class":"Dcmn","value":1})"), "Untitled-1");
  EXPECT_EQ(property("Ttl ", R"({"form":"Clss","class":"Dcmn"})"), "Untitled-1");
  EXPECT_EQ(property("Nm  ", R"({"form":"Idnt","class":"Lyr ","value":2})"), "Layer 1");
  EXPECT_EQ(property("LyrI", R"({"form":"name","class":"Lyr ","value":"Layer 1"})"), 2);
  EXPECT_EQ(property("LyrI", R"({"form":"rele","class":"Lyr ","value":1})"), 2);
  EXPECT_EQ(property("LyrI", R"({"form":"Enmr","class":"Lyr ","enumType":"Ordn","value":"Lst "})"),
            2);
  EXPECT_EQ(property("Nm  ", R"({"form":"Enmr","class":"HstS","enumType":"Ordn","value":"Trgt"})"),
            "Open");
}

TEST_F(ControlSuite, FindsAnObjectInsideAnother) {
  theHost().model().documents.push_back({.id = 2, .name = "Second", .layers = {{7, "Seventh"}}});
  EXPECT_EQ(property("Nm  ", R"({"form":"indx","class":"Lyr ","value":1},)"
                             R"({"form":"indx","class":"Dcmn","value":2})"),
            "Seventh");
  EXPECT_EQ(property("PrNm", R"({"form":"indx","class":"Actn","value":2},)"
                             R"({"form":"name","class":"ASet","value":"Default Actions"})"),
            "Default Actions");
}

TEST_F(ControlSuite, ReadsAPropertyOfAnotherClassFromAnObjectInside) {
  const std::string document =
      R"({"form":"Enmr","class":"Dcmn","enumType":"Ordn","value":"Trgt"}])";
  EXPECT_EQ(get(R"([{"form":"prop","class":"BckL","key":"Bckg"},)" + document).dump(),
            R"([{"key":"Bckg","type":"bool","value":true}])");
  theHost().model().documents[0].layers[0].background = false;
  EXPECT_EQ(get(R"([{"form":"prop","class":"BckL","key":"Bckg"},)" + document), kNoSuchObject);
}

TEST_F(ControlSuite, ReportsWhatDoesNotExist) {
  EXPECT_EQ(property("Nm  ", R"({"form":"indx","class":"Lyr ","value":0})"), kNoSuchObject);
  EXPECT_EQ(property("Nm  ", R"({"form":"indx","class":"Lyr ","value":3})"), kNoSuchObject);
  EXPECT_EQ(property("Nm  ", R"({"form":"rele","class":"Lyr ","value":-1})"), kNoSuchObject);
  EXPECT_EQ(property("Nm  ", R"({"form":"name","class":"Lyr ","value":"?"})"), kNoSuchObject);
  EXPECT_EQ(property("Nm  ", R"({"form":"Clss","class":"????"})"), kNoSuchObject);
  EXPECT_EQ(property("????", kApp), errMissingParameter);
  theHost().model().documents.clear();
  EXPECT_EQ(property("Ttl ", R"({"form":"Clss","class":"Dcmn"})"), kNoSuchObject);
}

TEST_F(ControlSuite, AnswersWithItemsOfEveryType) {
  std::string all;
  for (const char* kind : {"capp", "Dcmn", "Lyr ", "HstS", "ASet", "Actn", "Brsh"}) {
    all += get(R"([{"form":"Clss","class":")" + std::string(kind) + R"("}])").dump();
  }
  for (const char* type : {"GlbC", "type", "GlbO", "Objc", "Pth ", "alis", "TEXT", "UntF", "VlLs",
                           "bool", "comp", "doub", "enum", "long", "obj ", "bkmk", "tdta"}) {
    EXPECT_THAT(all, testing::HasSubstr(R"("type":")" + std::string(type) + '"'));
  }
}

TEST_F(ControlSuite, LogsAGetWithItsReferenceAndResult) {
  property("HstV", kApp);
  EXPECT_EQ(lines_.back().dump(),
            R"({"t":0,"what":"get","reference":[{"form":"prop","class":"Prpr","key":"HstV"},)"
            R"({"form":"Enmr","class":"capp","enumType":"Ordn","value":"Trgt"}],"result":0})");
}

TEST_F(ControlSuite, LeavesTheResultAloneWhenAGetFails) {
  theFaults().add({.procedure = "ActionControl.Get", .error = -1715});
  PIActionDescriptor answer = nullptr;
  EXPECT_EQ(control_->Get(&answer, referenceOf("[" + std::string(kApp) + "]")), -1715);
  EXPECT_EQ(answer, nullptr);
  EXPECT_EQ(lines_.back()["result"], -1715);
}

std::string setBrush(std::string_view key, double value) {
  return R"([{"key":"null","type":"obj ","value":[{"form":"Enmr","class":"Brsh",)"
         R"("enumType":"Ordn","value":"Trgt"}]},{"key":"T   ","type":"Objc","class":"Brsh",)"
         R"("value":[{"key":"$)" +
         std::string(key) + R"(","type":"UntF","unit":"#Pxl","value":)" + Json(value).dump() +
         "}]}]";
}

TEST_F(ControlSuite, ChangesTheModelWhenTheBrushIsSet) {
  EXPECT_EQ(play(kEventSet, setBrush("masterDiameter", 42.5)), 0);
  EXPECT_EQ(theHost().brush(), 42.5);
  EXPECT_EQ(play(kEventSet, setBrush("hardness", 10.0)), 0);
  EXPECT_EQ(play(kEventSet, setBrush("spacing", 30.0)), 0);
  EXPECT_EQ(theHost().model().brush->hardness, 10.0);
  EXPECT_EQ(theHost().model().brush->spacing, 30.0);
  EXPECT_EQ(played_, "[]");
}

TEST_F(ControlSuite, ChangesNothingForABrushOutOfRange) {
  EXPECT_EQ(play(kEventSet, setBrush("masterDiameter", 0.5)), paramErr);
  EXPECT_EQ(theHost().brush(), 13.0);
}

TEST_F(ControlSuite, RefusesToSetTheBrushOfAToolWithoutOne) {
  theHost().setBrush(std::nullopt);
  EXPECT_EQ(play(kEventSet, setBrush("masterDiameter", 20.0)), kCommandNotAvailable);
}

TEST_F(ControlSuite, ChangesTheModelWhenAToolIsSelectedByItsType) {
  EXPECT_EQ(play(kEventSelect, R"([{"key":"null","type":"obj ",)"
                               R"("value":[{"form":"Clss","class":"$pencilTool"}]}])"),
            0);
  EXPECT_EQ(theHost().tool(), "pencilTool");
  EXPECT_EQ(play(kEventSelect, R"([{"key":"null","type":"obj ",)"
                               R"("value":[{"form":"Clss","class":"Lyr "}]}])"),
            kCommandNotAvailable);
}

std::string action(std::string_view name) {
  return R"([{"key":"null","type":"obj ","value":[{"form":"name","class":"Actn","value":")" +
         std::string(name) + R"("},{"form":"name","class":"ASet","value":"Default Actions"}]}])";
}

TEST_F(ControlSuite, RecordsAPlayedActionAndReturnsItsMessage) {
  EXPECT_EQ(play(kEventPlay, action("Vignette")), 0);
  EXPECT_EQ(theHost().model().documents[0].history.back(), "Vignette");
  EXPECT_EQ(played_, "[]");
  theHost().model().actionSets[0].actions[0].message = "No selection";
  EXPECT_EQ(play(kEventPlay, action("Vignette")), 0);
  EXPECT_EQ(played_, R"([{"key":"Msge","type":"TEXT","value":"No selection"}])");
  EXPECT_EQ(play(kEventPlay, action("No Such Action")), kNoSuchObject);
}

TEST_F(ControlSuite, ReportsWhatIsWrongWithTheParametersOfAnEvent) {
  EXPECT_EQ(play(kEventSet, "[]"), errMissingParameter);
  EXPECT_EQ(play(kEventSet, R"([{"key":"null","type":"long","value":1}])"), kWrongDataType);
  EXPECT_EQ(play(fourCharCode("????"), "[]"), kCommandNotAvailable);
  PIActionDescriptor result = nullptr;
  EXPECT_EQ(control_->Play(&result, kEventSet, nullptr, plugInDialogSilent), errMissingParameter);
  EXPECT_TRUE(lines_.back()["descriptor"].is_null());
}

TEST_F(ControlSuite, LogsAPlayWithItsParameters) {
  play(kEventSelect,
       R"([{"key":"null","type":"obj ","value":[{"form":"Clss","class":"$pencilTool"}]}])");
  EXPECT_EQ(lines_.back().dump(),
            R"({"t":0,"what":"play","event":"slct","descriptor":[{"key":"null","type":"obj ",)"
            R"("value":[{"form":"Clss","class":"$pencilTool"}]}],"dialog":2,"result":0})");
}

TEST_F(ControlSuite, NumbersStringIDsFromOneInOrderOfAppearance) {
  DescriptorTypeID first = 0;
  DescriptorTypeID second = 0;
  EXPECT_EQ(control_->StringIDToTypeID("masterDiameter", &first), 0);
  EXPECT_EQ(control_->StringIDToTypeID("hardness", &second), 0);
  EXPECT_EQ(first, 1u);
  EXPECT_EQ(second, 2u);
  EXPECT_EQ(control_->StringIDToTypeID("masterDiameter", &second), 0);
  EXPECT_EQ(second, 1u);
  std::array<char, 20> text{};
  EXPECT_EQ(control_->TypeIDToStringID(1, text.data(), 20), 0);
  EXPECT_STREQ(text.data(), "masterDiameter");
  EXPECT_EQ(control_->TypeIDToStringID(1, text.data(), 7), 0);
  EXPECT_STREQ(text.data(), "master");
}

TEST_F(ControlSuite, ReportsAnErrorForAnIDWithoutAString) {
  std::array<char, 8> text = {'x'};
  EXPECT_EQ(control_->TypeIDToStringID(kKeyTool, text.data(), 8), errMissingParameter);
  EXPECT_EQ(control_->TypeIDToStringID(0, text.data(), 8), errMissingParameter);
  EXPECT_STREQ(text.data(), "x");
  DescriptorTypeID id = 0;
  EXPECT_EQ(control_->StringIDToTypeID("", &id), paramErr);
  EXPECT_EQ(control_->StringIDToTypeID(nullptr, &id), paramErr);
}

TEST_F(ControlSuite, WritesNothingToASilentLog) {
  theLog().setSink({});
  EXPECT_EQ(play(kEventPlay, action("Vignette")), 0);
  EXPECT_TRUE(lines_.empty());
}

}  // namespace
}  // namespace simulator
