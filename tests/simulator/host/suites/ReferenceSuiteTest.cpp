#include <array>
#include <vector>

#include "tests/actionfiles/AllocationCounter.h"
#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

class ReferenceSuite : public HostTest {
 protected:
  ReferenceSuite() { EXPECT_EQ(references_->Make(&reference_), 0); }
  ~ReferenceSuite() override { references_->Free(reference_); }

  PIActionReference reference_ = nullptr;
};

TEST_F(ReferenceSuite, KeepsItsFormsInPutOrder) {
  references_->PutProperty(reference_, kClassProperty, kKeyTool);
  references_->PutEnumerated(reference_, kClassApplication, kTypeOrdinal, kEnumTarget);
  references_->PutName(reference_, kClassAction, "Vignette");
  references_->PutIndex(reference_, kClassLayer, 3);
  references_->PutIdentifier(reference_, kClassLayer, 4000000000u);
  references_->PutOffset(reference_, kClassLayer, -1);
  references_->PutClass(reference_, kClassBrush);
  EXPECT_EQ(textOf(reference_),
            R"([{"form":"prop","class":"Prpr","key":"Tool"},)"
            R"({"form":"Enmr","class":"capp","enumType":"Ordn","value":"Trgt"},)"
            R"({"form":"name","class":"Actn","value":"Vignette"},)"
            R"({"form":"indx","class":"Lyr ","value":3},)"
            R"({"form":"Idnt","class":"Lyr ","value":4000000000},)"
            R"({"form":"rele","class":"Lyr ","value":-1},{"form":"Clss","class":"Brsh"}])");
}

TEST_F(ReferenceSuite, ReadsTheFormThatWasPutFirst) {
  references_->PutName(reference_, kClassAction, "Vignette");
  references_->PutIndex(reference_, kClassActionSet, 1);
  DescriptorFormID form = 0;
  DescriptorClassID desiredClass = 0;
  uint32 length = 0;
  std::array<char, 5> name{};
  EXPECT_EQ(references_->GetForm(reference_, &form), 0);
  EXPECT_EQ(references_->GetDesiredClass(reference_, &desiredClass), 0);
  EXPECT_EQ(references_->GetNameLength(reference_, &length), 0);
  EXPECT_EQ(references_->GetName(reference_, name.data(), 5), 0);
  EXPECT_EQ(form, kFormName);
  EXPECT_EQ(desiredClass, kClassAction);
  EXPECT_EQ(length, 8u);
  EXPECT_STREQ(name.data(), "Vign");
}

TEST_F(ReferenceSuite, HandsOutALongChainWithoutCopyingItAgainAndAgain) {
  constexpr std::size_t kForms = 3000;
  for (std::size_t i = 0; i < kForms; ++i) references_->PutIndex(reference_, kClassLayer, 1);
  std::vector<PIActionReference> chain = {reference_};
  chain.reserve(kForms);
  const testing_support::AllocationCounter counter;
  for (PIActionReference next = reference_; next != nullptr; chain.push_back(next)) {
    ASSERT_EQ(references_->GetContainer(chain.back(), &next), 0);
    if (next == nullptr) break;
  }
  EXPECT_EQ(chain.size(), kForms);
  EXPECT_LT(counter.peak(), kForms * 1000)
      << "a copy of the rest for each would take " << kForms / 2 << " forms on average";
  for (std::size_t i = 1; i < chain.size(); ++i) references_->Free(chain[i]);
}

TEST_F(ReferenceSuite, KeepsAContainerApartFromTheReferenceThatItCameFrom) {
  references_->PutIndex(reference_, kClassAction, 2);
  references_->PutIndex(reference_, kClassActionSet, 1);
  PIActionReference container = nullptr;
  ASSERT_EQ(references_->GetContainer(reference_, &container), 0);
  references_->PutIndex(container, kClassLayer, 5);
  references_->PutIndex(reference_, kClassLayer, 6);
  EXPECT_EQ(
      textOf(container),
      R"([{"form":"indx","class":"ASet","value":1},{"form":"indx","class":"Lyr ","value":5}])");
  EXPECT_EQ(textOf(reference_),
            R"([{"form":"indx","class":"Actn","value":2},{"form":"indx","class":"ASet","value":1},)"
            R"({"form":"indx","class":"Lyr ","value":6}])");
  references_->Free(container);
}

TEST_F(ReferenceSuite, HandsOutTheRestOfTheChainAsTheContainer) {
  references_->PutIndex(reference_, kClassAction, 2);
  references_->PutIndex(reference_, kClassActionSet, 1);
  PIActionReference container = nullptr;
  ASSERT_EQ(references_->GetContainer(reference_, &container), 0);
  EXPECT_EQ(textOf(container), R"([{"form":"indx","class":"ASet","value":1}])");
  PIActionReference end = container;
  EXPECT_EQ(references_->GetContainer(container, &end), 0);
  EXPECT_EQ(end, nullptr);
  EXPECT_EQ(references_->Free(container), 0);
}

TEST_F(ReferenceSuite, ChecksTheFormInEveryGetter) {
  references_->PutClass(reference_, kClassBrush);
  uint32 value = 0;
  int32 offset = 0;
  std::array<char, 4> name{};
  ASZString string = nullptr;
  const std::vector<OSErr> errors = {references_->GetNameLength(reference_, &value),
                                     references_->GetName(reference_, name.data(), 4),
                                     references_->GetIndex(reference_, &value),
                                     references_->GetIdentifier(reference_, &value),
                                     references_->GetOffset(reference_, &offset),
                                     references_->GetEnumerated(reference_, &value, &value),
                                     references_->GetProperty(reference_, &value),
                                     references_->GetNameZString(reference_, &string)};
  EXPECT_THAT(errors, testing::Each(kWrongDataType));
}

TEST_F(ReferenceSuite, ReportsAMissingParameterForAnEmptyReference) {
  DescriptorFormID form = 7;
  EXPECT_EQ(references_->GetForm(reference_, &form), errMissingParameter);
  EXPECT_EQ(form, 7u);
}

TEST_F(ReferenceSuite, ReadsBackIndexesIdentifiersOffsetsAndProperties) {
  uint32 value = 0;
  int32 offset = 0;
  EXPECT_EQ(
      references_->GetIndex(referenceOf(R"([{"form":"indx","class":"Lyr ","value":3}])"), &value),
      0);
  EXPECT_EQ(value, 3u);
  EXPECT_EQ(references_->GetIdentifier(referenceOf(R"([{"form":"Idnt","class":"Lyr ","value":9}])"),
                                       &value),
            0);
  EXPECT_EQ(value, 9u);
  EXPECT_EQ(references_->GetOffset(referenceOf(R"([{"form":"rele","class":"Lyr ","value":-2}])"),
                                   &offset),
            0);
  EXPECT_EQ(offset, -2);
  EXPECT_EQ(references_->GetProperty(
                referenceOf(R"([{"form":"prop","class":"Prpr","key":"Tool"}])"), &value),
            0);
  EXPECT_EQ(value, kKeyTool);
}

TEST_F(ReferenceSuite, TakesAndHandsOutNamesAsStrings) {
  ASZString name = nullptr;
  strings_->MakeFromCString("Höhe", 5, &name);
  EXPECT_EQ(references_->PutNameZString(reference_, kClassLayer, name), 0);
  strings_->Release(name);
  ASZString read = nullptr;
  ASSERT_EQ(references_->GetNameZString(reference_, &read), 0);
  EXPECT_EQ(strings_->LengthAsUnicodeCString(read), 4u);
  strings_->Release(read);
}

TEST_F(ReferenceSuite, RefusesANullName) {
  EXPECT_EQ(references_->PutName(reference_, kClassLayer, nullptr), paramErr);
  EXPECT_EQ(textOf(reference_), "[]");
}

}  // namespace
}  // namespace simulator
