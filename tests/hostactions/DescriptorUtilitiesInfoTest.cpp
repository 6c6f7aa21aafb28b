// Reads of properties and action names: the references that are made, and the host's answers.
#include <HostTerms.h>
#include <gtest/gtest.h>

#include "hostactions/DescriptorUtilities.h"
#include "suites/Suites.h"
#include "tests/hostactions/RecordingHost.h"
#include "tests/support/AlteredSuite.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr int kParameterError = 0x5061726D;
constexpr std::uint32_t kKeyTitle = fourCharCode("Ttl ");
constexpr std::uint32_t kKeyOpacity = fourCharCode("Opct");
constexpr std::uint32_t kKeyWidth = fourCharCode("Wdth");

class DescriptorUtilitiesInfo : public testing::Test {
 protected:
  DescriptorUtilitiesInfo() {
    Document second;
    second.id = 77;
    second.name = "Second";
    second.layers[1].id = 5;
    second.layers[1].opacity = 40.0;
    theHost().model().documents.push_back(second);
  }

  /// The reference of the only get so far.
  Json reference() {
    const auto gets = machine_.lines("get");
    EXPECT_EQ(gets.size(), 1U);
    return gets.empty() ? Json() : gets.back()["reference"];
  }

  Machine machine_;
  char text_[32] = "untouched";
  std::uint32_t length_ = 31;
  double number_ = -1.0;
  std::uint32_t unit_ = 0;
};

using DescriptorUtilitiesActionName = DescriptorUtilitiesInfo;

}  // namespace

TEST_F(DescriptorUtilitiesInfo, ReadsAPropertyOfTheCurrentObjectOfAClass) {
  EXPECT_EQ(PIUGetInfo(kClassDocument, kKeyTitle, text_, &length_), 0);
  EXPECT_STREQ(text_, "Untitled-1");
  EXPECT_EQ(length_, 10U);
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "prop", "class": "Prpr", "key": "Ttl "},
      {"form": "Enmr", "class": "Dcmn", "enumType": "Ordn", "value": "Trgt"}])"));
}

TEST_F(DescriptorUtilitiesInfo, ReadsAPropertyOfTheObjectWithAnIndex) {
  EXPECT_EQ(PIUGetInfoByIndex(2, kClassDocument, kKeyTitle, text_, &length_), 0);
  EXPECT_STREQ(text_, "Second");
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "prop", "class": "Prpr", "key": "Ttl "},
      {"form": "indx", "class": "Dcmn", "value": 2}])"));
}

TEST_F(DescriptorUtilitiesInfo, ReadsAPropertyOfTheObjectWithAnIdentifier) {
  EXPECT_EQ(PIUGetInfoByID(77, kClassDocument, kKeyTitle, text_, &length_), 0);
  EXPECT_STREQ(text_, "Second");
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "prop", "class": "Prpr", "key": "Ttl "},
      {"form": "Idnt", "class": "Dcmn", "value": 77}])"));
}

TEST_F(DescriptorUtilitiesInfo, ReadsAPropertyOfAnObjectWithinAnotherByIndexes) {
  const std::uint32_t layer = 2;
  EXPECT_EQ(
      PIUGetInfoByIndexIndex(layer, 2, kClassLayer, kClassDocument, kKeyOpacity, &number_, &unit_),
      0);
  EXPECT_EQ(number_, 40.0);
  EXPECT_EQ(unit_, kUnitPercent);
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "prop", "class": "Prpr", "key": "Opct"},
      {"form": "indx", "class": "Lyr ", "value": 2},
      {"form": "indx", "class": "Dcmn", "value": 2}])"));
}

TEST_F(DescriptorUtilitiesInfo, ReadsAPropertyOfAnObjectWithinAnotherByIdentifiers) {
  EXPECT_EQ(PIUGetInfoByIDID(5, 77, kClassLayer, kClassDocument, kKeyOpacity, &number_, &unit_), 0);
  EXPECT_EQ(number_, 40.0);
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "prop", "class": "Prpr", "key": "Opct"},
      {"form": "Idnt", "class": "Lyr ", "value": 5},
      {"form": "Idnt", "class": "Dcmn", "value": 77}])"));
}

TEST_F(DescriptorUtilitiesInfo, AsksForTheBackgroundPropertyForEveryKey) {
  Boolean background = 7;
  EXPECT_EQ(PIUGetBackgroundInfo(kKeyBackground, &background, nullptr), 0);
  EXPECT_EQ(background, 1);
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "prop", "class": "BckL", "key": "Bckg"},
      {"form": "Enmr", "class": "Dcmn", "enumType": "Ordn", "value": "Trgt"}])"));
  machine_.drain();
  // The answer contains only that property.
  EXPECT_EQ(PIUGetBackgroundInfo(kKeyOpacity, &number_, &unit_), 0);
  EXPECT_EQ(number_, -1.0);
}

TEST_F(DescriptorUtilitiesInfo, TakesTheItemUnderTheKeyFromTheAnswer) {
  theHost().setAnswer(kKeyBackground, descriptorFromJson(jsonOf(R"([
      {"key": "Bckg", "type": "bool", "value": true},
      {"key": "Opct", "type": "UntF", "unit": "#Prc", "value": 62.5}])"),
                                                         theHost().typeIds()));
  EXPECT_EQ(PIUGetBackgroundInfo(kKeyOpacity, &number_, &unit_), 0);
  EXPECT_EQ(number_, 62.5);
}

TEST_F(DescriptorUtilitiesInfo, ReturnsTheHostsErrorForAnObjectThatItDoesNotFind) {
  EXPECT_EQ(PIUGetInfoByIndex(3, kClassDocument, kKeyTitle, text_, &length_), -1728);
  EXPECT_EQ(PIUGetInfoByID(78, kClassDocument, kKeyTitle, text_, &length_), -1728);
  EXPECT_EQ(PIUGetInfo(kClassDocument, fourCharCode("????"), text_, &length_), -1715);
  EXPECT_STREQ(text_, "untouched");
  EXPECT_EQ(length_, 31U);
}

TEST_F(DescriptorUtilitiesInfo, ReturnsTheParameterErrorForAMissingExtraAndFreesTheAnswer) {
  RecordingHost recorder;
  EXPECT_EQ(PIUGetInfo(kClassDocument, kKeyWidth, &number_, nullptr), kParameterError);
  EXPECT_EQ(number_, -1.0);
  EXPECT_EQ(recorder.freed.size(), 2U);
}

TEST_F(DescriptorUtilitiesInfo, ReturnsTheParameterErrorForANullValueBeforeCallingTheHost) {
  std::uint32_t extra = 0;
  EXPECT_EQ(PIUGetInfo(kClassDocument, kKeyTitle, nullptr, &extra), kParameterError);
  EXPECT_EQ(PIUGetInfoByIndex(1, kClassDocument, kKeyTitle, nullptr, &extra), kParameterError);
  EXPECT_EQ(PIUGetInfoByID(1, kClassDocument, kKeyTitle, nullptr, &extra), kParameterError);
  EXPECT_EQ(PIUGetInfoByIndexIndex(1, 1, kClassLayer, kClassDocument, kKeyTitle, nullptr, &extra),
            kParameterError);
  EXPECT_EQ(PIUGetInfoByIDID(1, 1, kClassLayer, kClassDocument, kKeyTitle, nullptr, &extra),
            kParameterError);
  EXPECT_EQ(PIUGetBackgroundInfo(kKeyBackground, nullptr, &extra), kParameterError);
  EXPECT_TRUE(machine_.lines().empty());
}

TEST_F(DescriptorUtilitiesActionName, IsReadByTheIndexesOfSetAndAction) {
  RecordingHost recorder;
  EXPECT_EQ(PIUActionsGetName(std::uint32_t{1}, 2, text_, &length_), 0);
  EXPECT_STREQ(text_, "Frame Channel");
  EXPECT_EQ(length_, 13U);
  EXPECT_EQ(recorder.textLimits, std::vector<std::uint32_t>{14});
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "indx", "class": "Actn", "value": 2},
      {"form": "indx", "class": "ASet", "value": 1}])"));
}

TEST_F(DescriptorUtilitiesActionName, IsReadByTheNameOfTheSetAndTheIndexOfTheAction) {
  RecordingHost recorder;
  EXPECT_EQ(PIUActionsGetName("Default Actions", 1, text_, &length_), 0);
  EXPECT_STREQ(text_, "Vignette");
  EXPECT_EQ(length_, 8U);
  EXPECT_EQ(recorder.textLimits, std::vector<std::uint32_t>{9});
  EXPECT_EQ(reference(), jsonOf(R"([
      {"form": "indx", "class": "Actn", "value": 1},
      {"form": "name", "class": "ASet", "value": "Default Actions"}])"));
}

TEST_F(DescriptorUtilitiesActionName, IsReadWhateverLengthIsPassed) {
  length_ = 0;
  EXPECT_EQ(PIUActionsGetName(std::uint32_t{1}, 3, text_, &length_), 0);
  EXPECT_STREQ(text_, "Wood Frame");
  EXPECT_EQ(length_, 10U);
}

TEST_F(DescriptorUtilitiesActionName, GivesTheHostsErrorForNoSuchActionAndWritesNothing) {
  EXPECT_EQ(PIUActionsGetName(std::uint32_t{1}, 4, text_, &length_), -1728);
  EXPECT_EQ(PIUActionsGetName(std::uint32_t{2}, 1, text_, &length_), -1728);
  EXPECT_EQ(PIUActionsGetName("No Such Set", 1, text_, &length_), -1728);
  EXPECT_STREQ(text_, "untouched");
  EXPECT_EQ(length_, 31U);
}

TEST_F(DescriptorUtilitiesActionName, StaysUnwrittenIfTheAnswerHasNone) {
  AlteredSuite descriptors(sPSActionDescriptor);
  descriptors->HasKey = [](PIActionDescriptor, DescriptorKeyID, Boolean* has) -> OSErr {
    *has = false;
    return 0;
  };
  EXPECT_EQ(PIUActionsGetName(std::uint32_t{1}, 1, text_, &length_), 0);
  EXPECT_STREQ(text_, "untouched");
  EXPECT_EQ(length_, 31U);
}

TEST_F(DescriptorUtilitiesActionName, GivesTheParameterErrorIfNoRoomCanHoldItsLength) {
  {
    AlteredSuite descriptors(sPSActionDescriptor);
    descriptors->GetStringLength = [](PIActionDescriptor, DescriptorKeyID, uint32* length) {
      *length = 0xFFFFFFFF;
      return OSErr{0};
    };
    descriptors->GetString = [](PIActionDescriptor, DescriptorKeyID, char*, uint32 size) {
      ADD_FAILURE() << "read into " << size << " bytes";
      return OSErr{-1};
    };
    EXPECT_EQ(PIUActionsGetName(std::uint32_t{1}, 2, text_, &length_), kParameterError);
    EXPECT_EQ(PIUActionsGetName("Default Actions", 2, text_, &length_), kParameterError);
  }
  EXPECT_STREQ(text_, "untouched");
  EXPECT_EQ(length_, 31U);
}

TEST_F(DescriptorUtilitiesActionName,
       GivesTheParameterErrorWithoutABufferOrALengthBeforeCallingTheHost) {
  EXPECT_EQ(PIUActionsGetName(std::uint32_t{1}, 1, nullptr, &length_), kParameterError);
  EXPECT_EQ(PIUActionsGetName(std::uint32_t{1}, 1, text_, nullptr), kParameterError);
  EXPECT_EQ(PIUActionsGetName("Default Actions", 1, nullptr, &length_), kParameterError);
  EXPECT_EQ(PIUActionsGetName("Default Actions", 1, text_, nullptr), kParameterError);
  EXPECT_TRUE(machine_.lines().empty());
}
