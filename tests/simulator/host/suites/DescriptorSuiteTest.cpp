#include <array>
#include <vector>

#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

constexpr DescriptorKeyID kKey = fourCharCode("KeyA");
constexpr DescriptorKeyID kOther = fourCharCode("KeyB");

class DescriptorSuite : public HostTest {
 protected:
  DescriptorSuite() { EXPECT_EQ(descriptors_->Make(&descriptor_), 0); }
  ~DescriptorSuite() override { descriptors_->Free(descriptor_); }

  DescriptorTypeID type() {
    DescriptorTypeID type = 0;
    EXPECT_EQ(descriptors_->GetType(descriptor_, kKey, &type), 0);
    return type;
  }

  PIActionDescriptor descriptor_ = nullptr;
};

TEST_F(DescriptorSuite, KeepsNumbersOfAllWidths) {
  descriptors_->PutInteger(descriptor_, kKey, -2147483647 - 1);
  int32 integer = 0;
  EXPECT_EQ(descriptors_->GetInteger(descriptor_, kKey, &integer), 0);
  EXPECT_EQ(integer, -2147483647 - 1);
  EXPECT_EQ(type(), kTypeInteger);

  descriptors_->PutInteger64(descriptor_, kKey, 1LL << 62);
  int64 wide = 0;
  EXPECT_EQ(descriptors_->GetInteger64(descriptor_, kKey, &wide), 0);
  EXPECT_EQ(wide, 1LL << 62);
  EXPECT_EQ(type(), kTypeInteger64);

  descriptors_->PutFloat(descriptor_, kKey, 0.1);
  real64 real = 0;
  EXPECT_EQ(descriptors_->GetFloat(descriptor_, kKey, &real), 0);
  EXPECT_EQ(real, 0.1);
  EXPECT_EQ(type(), kTypeFloat);
}

TEST_F(DescriptorSuite, KeepsUnitsEnumerationsClassesAndBooleans) {
  descriptors_->PutUnitFloat(descriptor_, kKey, kUnitPixels, 12.5);
  DescriptorUnitID unit = 0;
  real64 value = 0;
  EXPECT_EQ(descriptors_->GetUnitFloat(descriptor_, kKey, &unit, &value), 0);
  EXPECT_EQ(unit, kUnitPixels);
  EXPECT_EQ(value, 12.5);

  descriptors_->PutEnumerated(descriptor_, kKey, kTypeOrdinal, kEnumTarget);
  DescriptorEnumTypeID enumType = 0;
  DescriptorEnumID enumValue = 0;
  EXPECT_EQ(descriptors_->GetEnumerated(descriptor_, kKey, &enumType, &enumValue), 0);
  EXPECT_EQ(enumType, kTypeOrdinal);
  EXPECT_EQ(enumValue, kEnumTarget);

  descriptors_->PutGlobalClass(descriptor_, kKey, kClassLayer);
  DescriptorClassID classID = 0;
  EXPECT_EQ(descriptors_->GetClass(descriptor_, kKey, &classID), 0);
  EXPECT_EQ(classID, kClassLayer);
  EXPECT_EQ(type(), kTypeGlobalClass);

  descriptors_->PutBoolean(descriptor_, kKey, 7);
  Boolean boolean = 0;
  EXPECT_EQ(descriptors_->GetBoolean(descriptor_, kKey, &boolean), 0);
  EXPECT_EQ(boolean, 1);
}

TEST_F(DescriptorSuite, CutsTextToTheLimitWithItsTerminator) {
  descriptors_->PutString(descriptor_, kKey, "abcdef");
  uint32 length = 0;
  EXPECT_EQ(descriptors_->GetStringLength(descriptor_, kKey, &length), 0);
  EXPECT_EQ(length, 6u);
  std::array<char, 8> buffer;
  buffer.fill('#');
  EXPECT_EQ(descriptors_->GetString(descriptor_, kKey, buffer.data(), 4), 0);
  EXPECT_EQ(std::string_view(buffer.data(), 8), std::string_view("abc\0####", 8));
  EXPECT_EQ(descriptors_->GetString(descriptor_, kKey, buffer.data(), 0), paramErr);
}

TEST_F(DescriptorSuite, CopiesWhatIsPut) {
  PIActionDescriptor inner = descriptorOf(R"([{"key": "KeyA", "type": "long", "value": 1}])");
  descriptors_->PutObject(descriptor_, kKey, kClassLayer, inner);
  descriptors_->PutInteger(inner, kKey, 2);
  EXPECT_EQ(textOf(descriptor_), R"([{"key":"KeyA","type":"Objc","class":"Lyr ",)"
                                 R"("value":[{"key":"KeyA","type":"long","value":1}]}])");
}

TEST_F(DescriptorSuite, HandsOutCopiesThatTheCallerFrees) {
  descriptors_->PutObject(descriptor_, kKey, kClassLayer,
                          descriptorOf(R"([{"key": "KeyA", "type": "long", "value": 1}])"));
  DescriptorClassID classID = 0;
  PIActionDescriptor inner = nullptr;
  ASSERT_EQ(descriptors_->GetObject(descriptor_, kKey, &classID, &inner), 0);
  EXPECT_EQ(classID, kClassLayer);
  descriptors_->Clear(inner);
  EXPECT_THAT(textOf(descriptor_), testing::HasSubstr(R"("value":1)"));
  EXPECT_EQ(descriptors_->Free(inner), 0);
}

TEST_F(DescriptorSuite, PutsADescriptorIntoItself) {
  descriptors_->PutInteger(descriptor_, kOther, 1);
  EXPECT_EQ(descriptors_->PutGlobalObject(descriptor_, kKey, kClassLayer, descriptor_), 0);
  EXPECT_EQ(type(), kTypeGlobalObject);
  uint32 count = 0;
  descriptors_->GetCount(descriptor_, &count);
  EXPECT_EQ(count, 2u);
}

TEST_F(DescriptorSuite, HoldsListsAndReferences) {
  EXPECT_EQ(
      descriptors_->PutList(descriptor_, kKey, listOf(R"([{"type": "bool", "value": true}])")), 0);
  EXPECT_EQ(descriptors_->PutReference(descriptor_, kOther,
                                       referenceOf(R"([{"form": "Clss", "class": "Brsh"}])")),
            0);
  PIActionList list = nullptr;
  PIActionReference reference = nullptr;
  EXPECT_EQ(descriptors_->GetList(descriptor_, kKey, &list), 0);
  EXPECT_EQ(descriptors_->GetReference(descriptor_, kOther, &reference), 0);
  EXPECT_EQ(textOf(list), R"([{"type":"bool","value":true}])");
  EXPECT_EQ(textOf(reference), R"([{"form":"Clss","class":"Brsh"}])");
  lists_->Free(list);
  references_->Free(reference);
}

TEST_F(DescriptorSuite, KeepsZeroBytesInData) {
  EXPECT_EQ(descriptors_->PutData(descriptor_, kKey, 3, "a\0b"), 0);
  int32 length = 0;
  EXPECT_EQ(descriptors_->GetDataLength(descriptor_, kKey, &length), 0);
  ASSERT_EQ(length, 3);
  std::array<char, 3> bytes{};
  EXPECT_EQ(descriptors_->GetData(descriptor_, kKey, bytes.data()), 0);
  EXPECT_EQ(std::string_view(bytes.data(), 3), std::string_view("a\0b", 3));
  EXPECT_EQ(descriptors_->PutData(descriptor_, kKey, -1, "a"), paramErr);
}

TEST_F(DescriptorSuite, PutsSeveralIntegersAsAList) {
  const std::array<int32, 3> values = {1, -2, 3};
  EXPECT_EQ(descriptors_->PutIntegers(descriptor_, kKey, 3, values.data()), 0);
  EXPECT_EQ(type(), kTypeValueList);
  std::array<int32, 3> read{};
  EXPECT_EQ(descriptors_->GetIntegers(descriptor_, kKey, 3, read.data()), 0);
  EXPECT_EQ(read, values);
  EXPECT_EQ(descriptors_->GetIntegers(descriptor_, kKey, 4, read.data()), errMissingParameter);
}

TEST_F(DescriptorSuite, ReportsAMissingParameterForAMissingKeyAndWritesNothing) {
  int32 value = 5;
  EXPECT_EQ(descriptors_->GetInteger(descriptor_, kKey, &value), errMissingParameter);
  EXPECT_EQ(value, 5);
  Boolean has = 1;
  EXPECT_EQ(descriptors_->HasKey(descriptor_, kKey, &has), 0);
  EXPECT_EQ(has, 0);
  EXPECT_EQ(descriptors_->Erase(descriptor_, kKey), errMissingParameter);
  DescriptorTypeID unused = 0;
  EXPECT_EQ(descriptors_->GetType(descriptor_, kKey, &unused), errMissingParameter);
  EXPECT_EQ(descriptors_->GetKey(descriptor_, 0, &unused), errMissingParameter);
}

TEST_F(DescriptorSuite, ChecksTheTypeInEveryGetter) {
  descriptors_->PutInteger(descriptor_, kKey, 1);
  descriptors_->PutFloat(descriptor_, kOther, 1.0);
  uint32 id = 0;
  real64 real = 0;
  int32 integer = 0;
  int64 wide = 0;
  Boolean boolean = 0;
  Handle handle = nullptr;
  ASZString string = nullptr;
  PIActionList list = nullptr;
  PIActionReference reference = nullptr;
  PIActionDescriptor object = nullptr;
  CFDataRef bookmark = nullptr;
  std::array<char, 8> bytes{};
  const auto& d = *descriptors_;
  const std::vector<OSErr> errors = {d.GetInteger(descriptor_, kOther, &integer),
                                     d.GetFloat(descriptor_, kKey, &real),
                                     d.GetUnitFloat(descriptor_, kKey, &id, &real),
                                     d.GetStringLength(descriptor_, kKey, &id),
                                     d.GetString(descriptor_, kKey, bytes.data(), 8),
                                     d.GetBoolean(descriptor_, kKey, &boolean),
                                     d.GetList(descriptor_, kKey, &list),
                                     d.GetObject(descriptor_, kKey, &id, &object),
                                     d.GetGlobalObject(descriptor_, kKey, &id, &object),
                                     d.GetEnumerated(descriptor_, kKey, &id, &id),
                                     d.GetReference(descriptor_, kKey, &reference),
                                     d.GetClass(descriptor_, kKey, &id),
                                     d.GetGlobalClass(descriptor_, kKey, &id),
                                     d.GetAlias(descriptor_, kKey, &handle),
                                     d.GetIntegers(descriptor_, kKey, 1, &integer),
                                     d.GetZString(descriptor_, kKey, &string),
                                     d.GetDataLength(descriptor_, kKey, &integer),
                                     d.GetData(descriptor_, kKey, bytes.data()),
                                     d.GetInteger64(descriptor_, kKey, &wide),
                                     d.GetBookmark(descriptor_, kKey, &bookmark)};
  EXPECT_THAT(errors, testing::Each(kWrongDataType));
}

TEST_F(DescriptorSuite, ReportsAParameterErrorForANullDestination) {
  descriptors_->PutInteger(descriptor_, kKey, 1);
  EXPECT_EQ(descriptors_->GetInteger(descriptor_, kKey, nullptr), paramErr);
  EXPECT_EQ(descriptors_->Make(nullptr), paramErr);
  EXPECT_EQ(lists_->Make(nullptr), paramErr);
  EXPECT_EQ(references_->Make(nullptr), paramErr);
  descriptors_->PutList(descriptor_, kOther, listOf("[]"));
  EXPECT_EQ(descriptors_->GetList(descriptor_, kOther, nullptr), paramErr);
  EXPECT_EQ(descriptors_->PutString(descriptor_, kKey, nullptr), paramErr);
}

TEST_F(DescriptorSuite, KeepsKeysInTheOrderInWhichTheyWereFirstPut) {
  descriptors_->PutInteger(descriptor_, kOther, 1);
  descriptors_->PutInteger(descriptor_, kKey, 2);
  descriptors_->PutFloat(descriptor_, kOther, 3.0);
  DescriptorKeyID key = 0;
  EXPECT_EQ(descriptors_->GetKey(descriptor_, 0, &key), 0);
  EXPECT_EQ(key, kOther);
  EXPECT_EQ(descriptors_->Erase(descriptor_, kOther), 0);
  EXPECT_EQ(descriptors_->GetKey(descriptor_, 0, &key), 0);
  EXPECT_EQ(key, kKey);
}

TEST_F(DescriptorSuite, RequiresEveryKeyInHasKeys) {
  descriptors_->PutInteger(descriptor_, kKey, 1);
  const std::array<DescriptorKeyID, 3> both = {kKey, kOther, 0};
  const std::array<DescriptorKeyID, 2> one = {kKey, 0};
  Boolean has = 0;
  EXPECT_EQ(descriptors_->HasKeys(descriptor_, one.data(), &has), 0);
  EXPECT_EQ(has, 1);
  EXPECT_EQ(descriptors_->HasKeys(descriptor_, both.data(), &has), 0);
  EXPECT_EQ(has, 0);
}

TEST_F(DescriptorSuite, ComparesDescriptorsByTheirItems) {
  PIActionDescriptor same = descriptorOf(R"([{"key": "KeyA", "type": "long", "value": 1}])");
  descriptors_->PutInteger(descriptor_, kKey, 1);
  Boolean equal = 0;
  EXPECT_EQ(descriptors_->IsEqual(descriptor_, same, &equal), 0);
  EXPECT_EQ(equal, 1);
  descriptors_->PutInteger(same, kKey, 2);
  EXPECT_EQ(descriptors_->IsEqual(descriptor_, same, &equal), 0);
  EXPECT_EQ(equal, 0);
}

TEST_F(DescriptorSuite, PutsAWholeDescriptorIntoAHandle) {
  descriptors_->PutString(descriptor_, kKey, "text");
  Handle handle = nullptr;
  ASSERT_EQ(descriptors_->AsHandle(descriptor_, &handle), 0);
  PIActionDescriptor read = nullptr;
  ASSERT_EQ(descriptors_->HandleToDescriptor(handle, &read), 0);
  EXPECT_EQ(textOf(read), textOf(descriptor_));
  descriptors_->Free(read);
  **handle = 'x';
  EXPECT_EQ(descriptors_->HandleToDescriptor(handle, &read), paramErr);
  handles_->Dispose(handle);
}

}  // namespace
}  // namespace simulator
