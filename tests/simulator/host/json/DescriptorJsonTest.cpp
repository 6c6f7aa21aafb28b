#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/host/json/DescriptorJson.h"

namespace simulator {
namespace {

using testing::StartsWith;

class DescriptorJson : public testing::Test {
 protected:
  std::string roundTrip(std::string_view text) {
    return descriptorToJson(*descriptorFromJson(jsonOf(text), ids_), ids_).dump();
  }

  /// The error that reading a descriptor gives, as "place: reason".
  std::string fault(std::string_view text) {
    try {
      descriptorFromJson(jsonOf(text), ids_);
    } catch (const DescriptorJsonError& error) {
      return error.what();
    }
    return "nothing wrong";
  }

  std::string referenceFault(std::string_view text) {
    try {
      referenceFromJson(jsonOf(text), ids_);
    } catch (const DescriptorJsonError& error) {
      return error.what();
    }
    return "nothing wrong";
  }

  TypeIds ids_;
};

TEST_F(DescriptorJson, RestoresEveryTypeOfItem) {
  for (
      const char* text : {
          R"([])",
          R"([{"key":"KeyA","type":"long","value":-2147483648}])",
          R"([{"key":"KeyA","type":"comp","value":9223372036854775807}])",
          R"([{"key":"KeyA","type":"comp","value":-9223372036854775808}])",
          R"([{"key":"KeyA","type":"doub","value":0.1}])",
          R"([{"key":"KeyA","type":"UntF","unit":"#Pxl","value":-1.5}])",
          R"([{"key":"KeyA","type":"bool","value":false}])",
          R"([{"key":"KeyA","type":"enum","enumType":"$tool","value":"Trgt"}])",
          R"([{"key":"KeyA","type":"type","value":"$layer"},{"key":"b   ","type":"GlbC","value":7}])",
          R"([{"key":"KeyA","type":"Objc","class":"Lyr ","value":[{"key":9,"type":"bool","value":true}]}])",
          R"([{"key":"KeyA","type":"GlbO","class":"Lyr ","value":[]}])",
          R"([{"key":"KeyA","type":"VlLs","value":[{"type":"long","value":1},{"type":"VlLs","value":[]}]}])",
          R"([{"key":"KeyA","type":"alis","value":"/a"},{"key":"b   ","type":"Pth ","value":"/b"}])",
          R"([{"key":"KeyA","type":"bkmk","value":""}])",
          R"([{"key":"KeyA","type":"TEXT","value":"h\u0001é"}])",
          R"([{"key":"KeyA","type":"tdta","value":"AAEC"}])",
          R"([{"key":"KeyA","type":"ObAr"}])",
      }) {
    EXPECT_EQ(jsonOf(roundTrip(text)), jsonOf(text)) << text;
  }
}

TEST_F(DescriptorJson, RestoresEveryForm) {
  const char* text =
      R"([{"key":"null","type":"obj ","value":[{"form":"prop","class":"Prpr","key":"$title"},)"
      R"({"form":"name","class":"Lyr ","value":"x"},{"form":"indx","class":"Lyr ","value":4294967295},)"
      R"({"form":"Idnt","class":"Lyr ","value":0},{"form":"rele","class":"Lyr ","value":-2147483648},)"
      R"({"form":"Enmr","class":"Dcmn","enumType":"Ordn","value":"Trgt"},)"
      R"({"form":"Clss","class":"capp"}]}])";
  EXPECT_EQ(roundTrip(text), text);
}

TEST_F(DescriptorJson, ReadsNullAsTheNullDescriptor) {
  EXPECT_EQ(descriptorFromJson(nullptr, ids_), nullptr);
}

TEST_F(DescriptorJson, NumbersStringIDsInTheOrderOfTheDocument) {
  descriptorFromJson(jsonOf(R"([
      {"key": "$outer", "type": "Objc", "class": "$class", "value": [
        {"key": "$inner", "type": "enum", "enumType": "$type", "value": "$value"}]},
      {"key": "$last", "type": "bool", "value": true}])"),
                     ids_);
  EXPECT_EQ(ids_.idOf("outer"), 1u);
  EXPECT_EQ(ids_.idOf("class"), 2u);
  EXPECT_EQ(ids_.idOf("inner"), 3u);
  EXPECT_EQ(ids_.idOf("type"), 4u);
  EXPECT_EQ(ids_.idOf("value"), 5u);
  EXPECT_EQ(ids_.idOf("last"), 6u);
}

TEST_F(DescriptorJson, ReadsEveryFormOfAnID) {
  EXPECT_EQ(idFromJson("Tool", ids_), 0x546F6F6Cu);
  EXPECT_EQ(idFromJson("$paintbrushTool", ids_), 1u);
  EXPECT_EQ(idFromJson(4294967295u, ids_), 4294967295u);
  EXPECT_EQ(idFromJson(0, ids_), 0u);
  EXPECT_EQ(idFromJson("#Pxl", ids_), 0x2350786Cu);
  EXPECT_EQ(idFromJson("1234", ids_), 0x31323334u);
}

TEST_F(DescriptorJson, ReadsATextThatBeginsWithADollarSignAsAStringIDOfAnyLength) {
  for (const std::string text : {"s", "to", "set", "feather", "$", "$$$", "'a", "two words", "é"}) {
    const std::uint32_t id = idFromJson("$" + text, ids_);
    ASSERT_NE(ids_.stringOf(id), nullptr) << text;
    EXPECT_EQ(*ids_.stringOf(id), text);
  }
}

TEST_F(DescriptorJson, WritesIDsThatReadBack) {
  EXPECT_EQ(idToJson(0x546F6F6C, ids_), "Tool");
  EXPECT_EQ(idToJson(1, ids_), 1u);
  EXPECT_EQ(idToJson(ids_.idOf("layer"), ids_), "$layer");
  EXPECT_EQ(idToJson(ids_.idOf("set"), ids_), "$set");
  EXPECT_EQ(idToJson(0x24616263, ids_), 0x24616263u) << "a code that begins with \"$\"";
  EXPECT_EQ(idToJson(0x546F6F01, ids_), 0x546F6F01u) << "a code with a control character";
  EXPECT_EQ(idToJson(0x546F6FE9, ids_), 0x546F6FE9u) << "a code with a byte that is not ASCII";
}

TEST_F(DescriptorJson, RestoresEveryKindOfID) {
  std::vector<std::uint32_t> written = {0,          99,         0x20202020, 0x546F6F6C, 0x24616263,
                                        0x24242424, 0x61622463, 0x546F6F01, 0x546F6FE9, 0x7FFFFFFF,
                                        0x80000000, 0xFF616263, 0xFFFFFFFF};
  for (const char* text : {"s", "to", "set", "tool", "layer", "$", "$set", "'x", "é", "\xE9", ""}) {
    written.push_back(ids_.idOf(text));
  }
  for (const std::uint32_t id : written) {
    const Json json = idToJson(id, ids_);
    EXPECT_EQ(idFromJson(jsonOf(json.dump()), ids_), id) << json;
  }
}

TEST_F(DescriptorJson, ReportsWhatIsWrongWithAnID) {
  for (const char* key : {R"("")", R"("Too")", R"("Tools")", R"("$")", R"("é€")", "1.5", "true",
                          "null", "[]", "{}"}) {
    EXPECT_EQ(fault(R"([{"key": )" + std::string(key) + R"(, "type": "long", "value": 1}])"),
              "/0/key: must be an ID: four characters, \"$\" and a string ID, or an integer from 0 "
              "to 4294967295")
        << key;
  }
  for (const char* key : {"-1", "4294967296"}) {
    EXPECT_EQ(fault(R"([{"key": )" + std::string(key) + R"(, "type": "long", "value": 1}])"),
              "/0/key: must be from 0 to 4294967295 for an ID")
        << key;
  }
}

TEST_F(DescriptorJson, NamesThePlaceOfAnyFieldThatIsNotAnID) {
  const std::string item = R"([{"key": "KeyA", "type": )";
  EXPECT_THAT(fault(item + R"("UntF", "unit": "in", "value": 1}])"), StartsWith("/0/unit: must"));
  EXPECT_THAT(fault(item + R"("enum", "enumType": 1.5, "value": 1}])"),
              StartsWith("/0/enumType: must"));
  EXPECT_THAT(fault(item + R"("enum", "enumType": 1, "value": "x"}])"),
              StartsWith("/0/value: must"));
  EXPECT_THAT(fault(item + R"("type", "value": -1}])"), StartsWith("/0/value: must"));
  EXPECT_THAT(fault(item + R"("Objc", "class": "L", "value": []}])"), StartsWith("/0/class: must"));
  EXPECT_THAT(referenceFault(R"([{"form": "prop", "class": 1, "key": "x"}])"),
              StartsWith("/0/key: must"));
}

TEST_F(DescriptorJson, ReportsThePlaceAndReasonOfAFault) {
  EXPECT_EQ(fault("{}"), ": must be a list of items");
  EXPECT_EQ(fault("[1]"), "/0: must be an object");
  EXPECT_EQ(fault(R"([{"type": "long", "value": 1}])"), "/0: lacks the field \"key\"");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "value": 1}])"), "/0: lacks the field \"type\"");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "lon", "value": 1}])"),
            "/0/type: must be a text of four ASCII characters");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": 7, "value": 1}])"),
            "/0/type: must be a text of four ASCII characters");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "long"}])"), "/0: lacks the field \"value\"");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "long", "value": 1, "a/b": 2}])"),
            "/0/a~1b: is an unknown field; allowed here: key, type, value");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "ObAr", "value": 1}])"),
            "/0/value: is an unknown field; allowed here: key, type");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "bool", "value": true},
                      {"key": "KeyA", "type": "bool", "value": true}])"),
            "/1/key: occurs twice");
}

TEST_F(DescriptorJson, RequiresAValueOfTheItemsType) {
  const auto item = [](std::string_view type, std::string_view value) {
    return R"([{"key": "KeyA", "type": ")" + std::string(type) + R"(", "value": )" +
           std::string(value) + "}]";
  };
  const char* const kNotLong = "/0/value: must be an integer from -2147483648 to 2147483647";
  EXPECT_EQ(fault(item("long", "1.0")), kNotLong);
  EXPECT_EQ(fault(item("long", "2147483648")), kNotLong);
  EXPECT_EQ(fault(item("long", "-2147483649")), kNotLong);
  EXPECT_EQ(fault(item("comp", "9223372036854775808")),
            "/0/value: must be an integer from -9223372036854775808 to 9223372036854775807");
  EXPECT_EQ(fault(item("doub", "\"1\"")), "/0/value: must be a number");
  EXPECT_EQ(fault(item("doub", "1")), "nothing wrong");
  EXPECT_EQ(fault(item("bool", "1")), "/0/value: must be true or false");
  EXPECT_EQ(fault(item("TEXT", "null")), "/0/value: must be a text");
  EXPECT_EQ(fault(item("alis", "1")), "/0/value: must be a text");
  EXPECT_EQ(fault(item("tdta", "\"A\"")), "/0/value: is not base64");
  EXPECT_EQ(fault(item("VlLs", "{}")), "/0/value: must be a list of items");
  EXPECT_EQ(fault(item("obj ", "1")), "/0/value: must be a list of forms");
  EXPECT_EQ(fault(item("Objc", "[]")), "/0: lacks the field \"class\"");
  EXPECT_EQ(fault(item("UntF", "1")), "/0: lacks the field \"unit\"");
  EXPECT_EQ(fault(item("enum", "\"Trgt\"")), "/0: lacks the field \"enumType\"");
}

TEST_F(DescriptorJson, ReportsTheWholePathOfANestedFault) {
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "bool", "value": true},
                      {"key": "KeyB", "type": "VlLs", "value": [
                        {"type": "Objc", "class": "Lyr ", "value": [
                          {"key": "KeyA", "type": "long", "value": 1},
                          {"key": "KeyB", "type": "long", "value": "x"}]}]}])"),
            "/1/value/0/value/1/value: must be an integer from -2147483648 to 2147483647");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "VlLs", "value": [{"key": "KeyA", "type": "bool",
                                                                 "value": true}]}])"),
            "/0/value/0/key: is an unknown field; allowed here: type, value");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "Objc", "class": "Lyr ", "value": [], "x": 1}])"),
            "/0/x: is an unknown field; allowed here: key, type, class, value");
  EXPECT_EQ(fault(R"([{"key": "KeyA", "type": "obj ", "value": [
                      {"form": "Clss", "class": "Lyr "}, {"form": "indx", "class": "Lyr ",
                                                          "value": -1}]}])"),
            "/0/value/1/value: must be an integer from 0 to 4294967295");
}

TEST_F(DescriptorJson, ReportsWhatIsWrongWithAReference) {
  EXPECT_EQ(referenceFault("1"), ": must be a list of forms");
  EXPECT_EQ(
      referenceFault(R"([{"form": "????", "class": "Lyr "}])"),
      "/0/form: is not a form of a reference; allowed: Clss, Enmr, Idnt, indx, rele, prop, name");
  EXPECT_EQ(referenceFault(R"([{"form": "Clss"}])"), "/0: lacks the field \"class\"");
  EXPECT_EQ(referenceFault(R"([{"form": "Clss", "class": "Lyr ", "value": 1}])"),
            "/0/value: is an unknown field; allowed here: form, class");
  EXPECT_EQ(referenceFault(R"([{"form": "rele", "class": "Lyr ", "value": 2147483648}])"),
            "/0/value: must be an integer from -2147483648 to 2147483647");
}

TEST_F(DescriptorJson, ReplacesBytesThatAreNotUtf8) {
  Container container;
  container.put(1, {kTypeText, Text{"a\xFF"}});
  EXPECT_EQ(descriptorToJson(container, ids_)[0]["value"], "a\uFFFD");
}

TEST_F(DescriptorJson, WritesNumbersThatJsonLacksAsNull) {
  Container container;
  container.put(1, {kTypeFloat, std::numeric_limits<double>::quiet_NaN()});
  EXPECT_EQ(descriptorToJson(container, ids_).dump(), R"([{"key":1,"type":"doub","value":null}])");
}

/// `depth` containers nested in one another, lists and descriptors in turn.
std::string deep(int depth) {
  std::string open;
  std::string close;
  for (int i = 0; i < depth; i += 2) {
    open += R"([{"key":"KeyA","type":"VlLs","value":[{"type":"Objc","class":"Lyr ","value":)";
    close += "}]}]";
  }
  return open + "[]" + close;
}

TEST_F(DescriptorJson, HandlesNestingTenThousandDeep) {
  const Json json = jsonOf(deep(10000));
  const ContainerPtr container = descriptorFromJson(json, ids_);
  const Json written = descriptorToJson(*container, ids_);
  EXPECT_TRUE(equal(*descriptorFromJson(written, ids_), *container));
}

TEST_F(DescriptorJson, ReportsAFaultTenThousandDeep) {
  std::string text = deep(10000);
  text.replace(text.find("[]"), 2, "[1]");
  const std::string place = fault(text);
  EXPECT_THAT(place, testing::EndsWith("/0: must be an object"));
  EXPECT_GT(place.size(), 80000u);
}

}  // namespace
}  // namespace simulator
