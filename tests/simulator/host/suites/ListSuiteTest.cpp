#include <array>

#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

class ListSuite : public HostTest {
 protected:
  ListSuite() { EXPECT_EQ(lists_->Make(&list_), 0); }
  ~ListSuite() override { lists_->Free(list_); }

  PIActionList list_ = nullptr;
};

TEST_F(ListSuite, AppendsItemsOfAllTypesInOrder) {
  lists_->PutInteger(list_, 1);
  lists_->PutInteger64(list_, 2);
  lists_->PutFloat(list_, 3.5);
  lists_->PutUnitFloat(list_, kUnitPercent, 4.0);
  lists_->PutString(list_, "five");
  lists_->PutBoolean(list_, 0);
  lists_->PutEnumerated(list_, kTypeOrdinal, kEnumTarget);
  lists_->PutClass(list_, kClassBrush);
  lists_->PutGlobalClass(list_, kClassBrush);
  lists_->PutObject(list_, kClassLayer, descriptorOf("[]"));
  lists_->PutGlobalObject(list_, kClassLayer, descriptorOf("[]"));
  lists_->PutList(list_, listOf("[]"));
  lists_->PutReference(list_, referenceOf("[]"));
  lists_->PutData(list_, 1, "x");
  EXPECT_EQ(
      textOf(list_),
      R"([{"type":"long","value":1},{"type":"comp","value":2},{"type":"doub","value":3.5},)"
      R"({"type":"UntF","unit":"#Prc","value":4.0},{"type":"TEXT","value":"five"},)"
      R"({"type":"bool","value":false},{"type":"enum","enumType":"Ordn","value":"Trgt"},)"
      R"({"type":"type","value":"Brsh"},{"type":"GlbC","value":"Brsh"},)"
      R"({"type":"Objc","class":"Lyr ","value":[]},{"type":"GlbO","class":"Lyr ","value":[]},)"
      R"({"type":"VlLs","value":[]},{"type":"obj ","value":[]},)"
      R"({"type":"tdta","value":"eA=="}])");
}

TEST_F(ListSuite, ReadsItemsByIndexFromZero) {
  lists_->PutInteger(list_, 7);
  lists_->PutString(list_, "eight");
  int32 integer = 0;
  std::array<char, 16> text{};
  DescriptorTypeID type = 0;
  uint32 count = 0;
  EXPECT_EQ(lists_->GetInteger(list_, 0, &integer), 0);
  EXPECT_EQ(lists_->GetString(list_, 1, text.data(), 16), 0);
  EXPECT_EQ(lists_->GetType(list_, 1, &type), 0);
  EXPECT_EQ(lists_->GetCount(list_, &count), 0);
  EXPECT_EQ(integer, 7);
  EXPECT_STREQ(text.data(), "eight");
  EXPECT_EQ(type, kTypeText);
  EXPECT_EQ(count, 2u);
}

TEST_F(ListSuite, ReportsAMissingParameterForAnIndexBeyondTheEnd) {
  int32 value = 5;
  EXPECT_EQ(lists_->GetInteger(list_, 0, &value), errMissingParameter);
  EXPECT_EQ(value, 5);
}

TEST_F(ListSuite, ReportsAnErrorForAWrongType) {
  lists_->PutInteger(list_, 7);
  real64 value = 5.0;
  EXPECT_EQ(lists_->GetFloat(list_, 0, &value), kWrongDataType);
  EXPECT_EQ(value, 5.0);
}

TEST_F(ListSuite, PutsSeveralIntegersAsSeveralItems) {
  const std::array<int32, 2> values = {1, 2};
  EXPECT_EQ(lists_->PutIntegers(list_, 2, values.data()), 0);
  std::array<int32, 2> read{};
  EXPECT_EQ(lists_->GetIntegers(list_, 2, read.data()), 0);
  EXPECT_EQ(read, values);
}

TEST_F(ListSuite, CopiesAListPutIntoAnother) {
  PIActionList inner = listOf("[]");
  lists_->PutList(list_, inner);
  lists_->PutInteger(inner, 1);
  EXPECT_EQ(textOf(list_), R"([{"type":"VlLs","value":[]}])");
}

}  // namespace
}  // namespace simulator
