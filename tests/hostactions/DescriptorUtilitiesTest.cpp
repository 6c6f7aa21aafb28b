// Reads of one item of any type, and of the message in an action's result.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include <string_view>

#include "hostactions/DescriptorUtilities.h"
#include "suites/HostObjects.h"
#include "tests/hostactions/RecordingHost.h"
#include "tests/support/AlteredSuite.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr int kParameter = 0x5061726D;
constexpr int kNotImplemented = 0x21494D50;
constexpr std::uint32_t kKey = fourCharCode("Test");
constexpr std::uint32_t kOtherKey = fourCharCode("Othr");

class DescriptorUtilitiesItem : public testing::Test {
 protected:
  /// A descriptor with one item of these fields under `kKey`.
  PIActionDescriptor item(const char* fields) {
    Json entry = jsonOf(fields);
    entry["key"] = "Test";
    return descriptor(Json::array({entry}));
  }

  PIActionDescriptor descriptor(const Json& json) {
    return theHost().makeDescriptor(descriptorFromJson(json, theHost().typeIds()));
  }

  PIActionDescriptor text(const std::string& value) {
    return descriptor({{{"key", "Test"}, {"type", "TEXT"}, {"value", value}}});
  }

  /// Reads the item as a `T`; the extra output must stay unchanged.
  template <class T>
  int readPlain(const char* fields, T& value) {
    std::uint32_t extra = 99;
    const int error = PIUGetSingleItemFromDescriptor(item(fields), kKey, &value, &extra);
    EXPECT_EQ(extra, 99U) << fields;
    EXPECT_EQ(PIUGetSingleItemFromDescriptor(item(fields), kOtherKey, &value, &extra), 0);
    return error;
  }

  /// Reads the item as a handle.
  int readAlias(const char* fields, Handle& alias) { return readPlain(fields, alias); }

  Machine machine_;
};

using DescriptorUtilitiesErrorString = DescriptorUtilitiesItem;
using DescriptorUtilitiesPlayResult = DescriptorUtilitiesItem;

}  // namespace

TEST_F(DescriptorUtilitiesItem, ReadsClassesOfBothTypes) {
  std::uint32_t value = 0;
  EXPECT_EQ(readPlain(R"({"type": "type", "value": "RGBM"})", value), 0);
  EXPECT_EQ(value, fourCharCode("RGBM"));
  EXPECT_EQ(readPlain(R"({"type": "GlbC", "value": "GnrP"})", value), 0);
  EXPECT_EQ(value, fourCharCode("GnrP"));
}

TEST_F(DescriptorUtilitiesItem, ReadsBooleansOfOneByte) {
  Boolean value[2] = {7, 7};
  EXPECT_EQ(readPlain(R"({"type": "bool", "value": true})", value), 0);
  EXPECT_EQ(value[0], 1);
  EXPECT_EQ(readPlain(R"({"type": "bool", "value": false})", value), 0);
  EXPECT_EQ(value[0], 0);
  EXPECT_EQ(value[1], 7);
}

TEST_F(DescriptorUtilitiesItem, ReadsNumbersOfEachWidth) {
  std::int32_t integer = 0;
  EXPECT_EQ(readPlain(R"({"type": "long", "value": -2147483648})", integer), 0);
  EXPECT_EQ(integer, INT32_MIN);
  std::int64_t wide = 0;
  EXPECT_EQ(readPlain(R"({"type": "comp", "value": 9007199254740993})", wide), 0);
  EXPECT_EQ(wide, 9007199254740993);
  double number = 0;
  EXPECT_EQ(readPlain(R"({"type": "doub", "value": -0.1})", number), 0);
  EXPECT_EQ(number, -0.1);
}

TEST_F(DescriptorUtilitiesItem, ReadsAliasesAndPaths) {
  Handle alias = nullptr;
  EXPECT_EQ(readAlias(R"({"type": "alis", "value": "/a"})", alias), 0);
  ASSERT_NE(alias, nullptr);
  sPSHandle->DisposeRegularHandle(alias);
  alias = nullptr;
  EXPECT_EQ(readAlias(R"({"type": "Pth ", "value": "/b"})", alias), 0);
  ASSERT_NE(alias, nullptr);
  sPSHandle->DisposeRegularHandle(alias);
}

TEST_F(DescriptorUtilitiesItem, ReadsListsForTheCallerToFree) {
  PIActionList list = nullptr;
  EXPECT_EQ(readPlain(R"({"type": "VlLs", "value": [{"type": "long", "value": 5}]})", list), 0);
  const ActionList owner(list);
  std::int32_t first = 0;
  EXPECT_EQ(sPSActionList->GetInteger(list, 0, &first), 0);
  EXPECT_EQ(first, 5);
}

TEST_F(DescriptorUtilitiesItem, ReadsReferencesForTheCallerToFree) {
  PIActionReference reference = nullptr;
  const char* item = R"({"type": "obj ", "value": [{"form": "Clss", "class": "Lyr "}]})";
  EXPECT_EQ(readPlain(item, reference), 0);
  const ActionReference owner(reference);
  const Reference forms = theHost().contentOf(reference);
  ASSERT_EQ(forms.size(), 1U);
  EXPECT_EQ(forms[0].desiredClass, kClassLayer);
}

TEST_F(DescriptorUtilitiesItem, ReadsObjectsOfBothTypesWithTheirClass) {
  for (const char* type : {"Objc", "GlbO"}) {
    Json entry = jsonOf(R"({"key": "Test", "class": "Rctn", "value": [
        {"key": "Top ", "type": "long", "value": 5}]})");
    entry["type"] = type;
    PIActionDescriptor object = nullptr;
    std::uint32_t objectClass = 0;
    const PIActionDescriptor given = descriptor(Json::array({entry}));
    EXPECT_EQ(PIUGetSingleItemFromDescriptor(given, kKey, &object, &objectClass), 0) << type;
    const ActionDescriptor owner(object);
    EXPECT_EQ(objectClass, fourCharCode("Rctn"));
    std::int32_t top = 0;
    EXPECT_EQ(sPSActionDescriptor->GetInteger(object, fourCharCode("Top "), &top), 0);
    EXPECT_EQ(top, 5);
  }
}

TEST_F(DescriptorUtilitiesItem, ReadsUnitFloatsWithTheirUnit) {
  double value = 0;
  std::uint32_t unit = 0;
  const auto given = item(R"({"type": "UntF", "unit": "#Rlt", "value": 1.5})");
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(given, kKey, &value, &unit), 0);
  EXPECT_EQ(value, 1.5);
  EXPECT_EQ(unit, kUnitDistance);
}

TEST_F(DescriptorUtilitiesItem, ReadsEnumerationsWithTheirType) {
  std::uint32_t value = 0;
  std::uint32_t type = 0;
  const auto given = item(R"({"type": "enum", "enumType": "BlnM", "value": "Nrml"})");
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(given, kKey, &value, &type), 0);
  EXPECT_EQ(value, fourCharCode("Nrml"));
  EXPECT_EQ(type, fourCharCode("BlnM"));
}

TEST_F(DescriptorUtilitiesItem, ReturnsTheParameterErrorForATextOfLength10WithACapacityOf9) {
  RecordingHost recorder;
  char buffer[16] = "untouched";
  std::uint32_t length = 9;
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(text("0123456789"), kKey, buffer, &length), kParameter);
  EXPECT_STREQ(buffer, "untouched");
  EXPECT_EQ(length, 10U) << "the length is given all the same";
  EXPECT_TRUE(recorder.textLimits.empty());
}

TEST_F(DescriptorUtilitiesItem, ReadsATextOfLength10WithACapacityOf10WithLimit11) {
  RecordingHost recorder;
  char buffer[12] = "xxxxxxxxxxx";
  std::uint32_t length = 10;
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(text("0123456789"), kKey, buffer, &length), 0);
  EXPECT_STREQ(buffer, "0123456789");
  EXPECT_EQ(length, 10U);
  EXPECT_EQ(recorder.textLimits, std::vector<std::uint32_t>{11});
}

TEST_F(DescriptorUtilitiesItem, ReturnsTheParameterErrorForATextThatNoRoomCanHold) {
  char buffer[16] = "untouched";
  std::uint32_t length = 0xFFFFFFFF;
  AlteredSuite descriptors(sPSActionDescriptor);
  descriptors->GetStringLength = [](PIActionDescriptor, DescriptorKeyID, uint32* reported) {
    *reported = 0xFFFFFFFF;
    return OSErr{0};
  };
  descriptors->GetString = [](PIActionDescriptor, DescriptorKeyID, char*, uint32 size) {
    ADD_FAILURE() << "read into " << size << " bytes";
    return OSErr{-1};
  };
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(text("x"), kKey, buffer, &length), kParameter);
  EXPECT_STREQ(buffer, "untouched");
}

TEST_F(DescriptorUtilitiesErrorString, GivesTheParameterErrorForALengthAboveTheSize) {
  char buffer[4] = "xyz";
  const auto given = descriptor(jsonOf(R"([{"key": "Msge", "type": "TEXT", "value": "!"}])"));
  AlteredSuite descriptors(sPSActionDescriptor);
  descriptors->GetStringLength = [](PIActionDescriptor, DescriptorKeyID, uint32* reported) {
    *reported = 0xFFFFFFFF;
    return OSErr{0};
  };
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(given, buffer, 4), kParameter);
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(given, buffer, 0xFFFFFFFE), kParameter);
  EXPECT_STREQ(buffer, "xyz");
}

TEST_F(DescriptorUtilitiesItem, ReadsAnEmptyTextIntoABufferOfCapacity0) {
  char buffer[2] = "x";
  std::uint32_t length = 0;
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(text(""), kKey, buffer, &length), 0);
  EXPECT_STREQ(buffer, "");
}

TEST_F(DescriptorUtilitiesItem, ReturnsTheParameterErrorForAMissingExtraThatTheTypeNeeds) {
  const char* const items[] = {R"({"type": "GlbO", "class": "null", "value": []})",
                               R"({"type": "Objc", "class": "null", "value": []})",
                               R"({"type": "TEXT", "value": "x"})",
                               R"({"type": "UntF", "unit": "#Pxl", "value": 1})",
                               R"({"type": "enum", "enumType": "Ordn", "value": "Trgt"})"};
  for (const char* fields : items) {
    std::uint64_t value = 0x5555555555555555;
    EXPECT_EQ(PIUGetSingleItemFromDescriptor(item(fields), kKey, &value, nullptr), kParameter);
    EXPECT_EQ(value, 0x5555555555555555U) << fields;
  }
}

TEST_F(DescriptorUtilitiesItem, ReadsTheOtherTypesWithoutAnExtra) {
  const char* const items[] = {
      R"({"type": "type", "value": "RGBM"})", R"({"type": "GlbC", "value": "RGBM"})",
      R"({"type": "bool", "value": true})",   R"({"type": "comp", "value": 1})",
      R"({"type": "doub", "value": 1})",      R"({"type": "long", "value": 1})"};
  for (const char* fields : items) {
    std::uint64_t value = 0x5555555555555555;
    EXPECT_EQ(PIUGetSingleItemFromDescriptor(item(fields), kKey, &value, nullptr), 0);
    EXPECT_NE(value, 0x5555555555555555U) << fields;
  }
}

TEST_F(DescriptorUtilitiesItem, ReturnsNotImplementedForAnyOtherTypeAndWritesNothing) {
  const char* const items[] = {R"({"type": "tdta", "value": "AAAA"})",
                               R"({"type": "bkmk", "value": "/a"})", R"({"type": "xxxx"})"};
  for (const char* fields : items) {
    std::uint64_t value = 5;
    std::uint32_t extra = 6;
    EXPECT_EQ(PIUGetSingleItemFromDescriptor(item(fields), kKey, &value, &extra), kNotImplemented);
    EXPECT_EQ(PIUGetSingleItemFromDescriptor(item(fields), kKey, &value, nullptr), kNotImplemented);
    EXPECT_EQ(value, 5U) << fields;
    EXPECT_EQ(extra, 6U) << fields;
  }
}

TEST_F(DescriptorUtilitiesItem, Returns0ForAnAbsentKeyAndWritesNothing) {
  std::uint64_t value = 5;
  std::uint32_t extra = 6;
  const auto given = item(R"({"type": "long", "value": 1})");
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(given, kOtherKey, &value, &extra), 0);
  EXPECT_EQ(value, 5U);
  EXPECT_EQ(extra, 6U);
}

TEST_F(DescriptorUtilitiesItem, ReturnsTheParameterErrorForANullValueBeforeCallingTheHost) {
  std::uint32_t extra = 6;
  const auto given = item(R"({"type": "long", "value": 1})");
  EXPECT_EQ(PIUGetSingleItemFromDescriptor(given, kKey, nullptr, &extra), kParameter);
  EXPECT_TRUE(machine_.lines().empty()) << "no suite was acquired";
}

TEST_F(DescriptorUtilitiesErrorString, IsCopiedWithTheLimitOfItsOwnLength) {
  RecordingHost recorder;
  char buffer[32] = "xxxxxxxxxxxxxxxx";
  const auto given = descriptor(jsonOf(R"([{"key": "Msge", "type": "TEXT",
                                                 "value": "It broke."}])"));
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(given, buffer, 32), 0);
  EXPECT_EQ(recorder.textLimits, std::vector<std::uint32_t>{9});
  EXPECT_STREQ(buffer, "It broke") << "the terminator takes the last character's place";
}

TEST_F(DescriptorUtilitiesErrorString,
       IsReadIfItHasExactlyTheSizeAndGivesTheParameterErrorIfLonger) {
  RecordingHost recorder;
  char buffer[32] = "untouched";
  const auto given = descriptor(jsonOf(R"([{"key": "Msge", "type": "TEXT",
                                                 "value": "0123456789"}])"));
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(given, buffer, 9), kParameter);
  EXPECT_STREQ(buffer, "untouched");
  EXPECT_TRUE(recorder.textLimits.empty());
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(given, buffer, 10), 0);
  EXPECT_STREQ(buffer, "012345678");
  EXPECT_EQ(recorder.textLimits, std::vector<std::uint32_t>{10});
}

TEST_F(DescriptorUtilitiesErrorString, IsReadAsEmptyIfItHasOneCharacter) {
  char buffer[4] = "xyz";
  const auto given = descriptor(jsonOf(R"([{"key": "Msge", "type": "TEXT", "value": "!"}])"));
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(given, buffer, 1), 0);
  EXPECT_EQ(std::string_view(buffer, 3), std::string_view("\0yz", 3));
}

TEST_F(DescriptorUtilitiesErrorString, LeavesTheBufferUnchangedIfItIsEmptyOrMissing) {
  char buffer[4] = "xyz";
  const auto empty = descriptor(jsonOf(R"([{"key": "Msge", "type": "TEXT", "value": ""}])"));
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(empty, buffer, 4), 0);
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(empty, buffer, 0), 0);
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(text("other"), buffer, 4), 0);
  EXPECT_STREQ(buffer, "xyz");
}

TEST_F(DescriptorUtilitiesErrorString, GivesTheHostsErrorIfItIsNotAText) {
  char buffer[4] = "xyz";
  const auto given = descriptor(jsonOf(R"([{"key": "Msge", "type": "long", "value": 1}])"));
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(given, buffer, 4), -1703);
  EXPECT_STREQ(buffer, "xyz");
}

TEST_F(DescriptorUtilitiesErrorString, GivesTheParameterErrorForANullBufferBeforeCallingTheHost) {
  EXPECT_EQ(PIUGetErrorStringFromDescriptor(text("x"), nullptr, 10), kParameter);
  EXPECT_TRUE(machine_.lines().empty());
}

TEST_F(DescriptorUtilitiesPlayResult, IsMinus1WithAMessageOrForNullAndOtherwise0) {
  const auto message = descriptor(jsonOf(R"([{"key": "Msge", "type": "TEXT", "value": ""}])"));
  EXPECT_EQ(PIUCheckPlayResult(message), -1);
  EXPECT_EQ(PIUCheckPlayResult(descriptor(Json::array())), 0);
  EXPECT_EQ(PIUCheckPlayResult(text("no message")), 0);
  EXPECT_EQ(PIUCheckPlayResult(nullptr), -1);
}

TEST_F(DescriptorUtilitiesPlayResult, IsMinus1WithAMessageOfAnyType) {
  const auto given = descriptor(jsonOf(R"([{"key": "Msge", "type": "long", "value": 0}])"));
  EXPECT_EQ(PIUCheckPlayResult(given), -1);
}

TEST_F(DescriptorUtilitiesPlayResult, IsTheHostsErrorIfTheCheckFails) {
  const auto empty = descriptor(Json::array());
  theFaults().add({"ActionDescriptor.HasKey", -1728, 0, 1});
  EXPECT_EQ(PIUCheckPlayResult(empty), -1728);
  theFaults().add({"ActionDescriptor.HasKey", 77, 0, 1});
  EXPECT_EQ(PIUCheckPlayResult(empty), 77);
}
