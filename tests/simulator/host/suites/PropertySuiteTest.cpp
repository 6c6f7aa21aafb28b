#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

using PropertySuite = HostTest;

TEST_F(PropertySuite, ReportsWhetherTheHostIsModal) {
  std::intptr_t value = 1;
  EXPECT_EQ(properties_->getPropertyProc(kPhotoshopSignature, propAppIsModal, 0, &value, nullptr),
            0);
  EXPECT_EQ(value, 0);
  theHost().setModal(2);
  properties_->getPropertyProc(kPhotoshopSignature, propAppIsModal, 0, &value, nullptr);
  EXPECT_EQ(value, 2);
  EXPECT_EQ(lines_.front().dump(),
            R"({"t":0,"what":"property","signature":"8BIM","key":"aism","index":0,"result":0})");
}

TEST_F(PropertySuite, WritesNothingForAnUnknownProperty) {
  std::intptr_t value = 1;
  EXPECT_EQ(
      properties_->getPropertyProc(kPhotoshopSignature, fourCharCode("none"), 0, &value, nullptr),
      errPlugInPropertyUndefined);
  EXPECT_EQ(properties_->getPropertyProc(fourCharCode("none"), propAppIsModal, 0, &value, nullptr),
            errPlugInPropertyUndefined);
  EXPECT_EQ(value, 1);
}

TEST_F(PropertySuite, RefusesToSetAProperty) {
  EXPECT_EQ(properties_->setPropertyProc(kPhotoshopSignature, propAppIsModal, 0, 1, nullptr),
            errPlugInPropertyUndefined);
}

TEST_F(PropertySuite, WritesNothingWhenToldToFail) {
  theFaults().add({.procedure = "Property.GetSimple", .error = -1});
  std::intptr_t value = 1;
  EXPECT_EQ(properties_->getPropertyProc(kPhotoshopSignature, propAppIsModal, 0, &value, nullptr),
            -1);
  EXPECT_EQ(value, 1);
  EXPECT_EQ(lines_.back()["result"], -1);
}

TEST_F(PropertySuite, HasARecordOfTheVersionAskedFor) {
  EXPECT_EQ(properties_->propertyProcsVersion, 1);
  EXPECT_EQ(properties_->numPropertyProcs, 2);
}

}  // namespace
}  // namespace simulator
