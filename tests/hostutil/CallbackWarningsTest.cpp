// The warnings, with a version alert that this program defines.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "hostutil/CallbackChecks.h"
#include "hostutil/HostUtilities.h"
#include "simulator/host/callbacks/CallbackRecords.h"
#include "tests/hostutil/RecordChecks.h"

namespace {
std::string gAlert;  // what the version alert showed last
}  // namespace

// Replaces the one that shows nothing.
int ShowVersionAlert(const unsigned char* version) {
  gAlert.assign(reinterpret_cast<const char*>(version) + 1, version[0]);
  return 0;
}

namespace {

using hostutil_test::forEachCheck;
using hostutil_test::recordOf;

TEST(CallbackWarnings, ShowNoAlertForAnAvailableRecord) {
  forEachCheck([](const auto& check) {
    const auto record = recordOf(check, check.version, check.count);
    EXPECT_TRUE(check.warn(&record)) << check.name;
  });
  simulator::DescriptorRecord descriptor;
  EXPECT_TRUE(WarnHostDescriptorAvailable(&descriptor.parameters));
  EXPECT_TRUE(WarnHostDisplayPixelsAvailable(simulator::displayPixelsProc()));
  EXPECT_TRUE(WarnHostAdvanceStateAvailable(simulator::advanceStateProc()));
  EXPECT_TRUE(WarnHostColorServicesAvailable(simulator::colorServicesProc()));
  EXPECT_EQ(gAlert, "");
}

TEST(CallbackWarnings, ShowTheVersionNeededForAMissingOlderOrNewerRecord) {
  forEachCheck([](const auto& check) {
    const auto older = recordOf(check, check.version - 1, check.count);
    const auto newer = recordOf(check, check.version + 1, check.count);
    using Record = std::remove_const_t<decltype(older)>;
    for (const Record* record : {static_cast<const Record*>(nullptr), &older, &newer}) {
      gAlert.clear();
      EXPECT_FALSE(check.warn(record)) << check.name;
      EXPECT_EQ(gAlert, check.alert) << check.name;
    }
  });
}

TEST(CallbackWarnings, Show4Point0ForAMissingDescriptorRecord) {
  EXPECT_FALSE(WarnHostDescriptorAvailable(nullptr));
  EXPECT_EQ(gAlert, "4.0.");
}

TEST(CallbackWarnings, Show4Point0ForAnOlderOrNewerDescriptorRecord) {
  for (const int16 version : {int16{-1}, int16{1}}) {
    simulator::DescriptorRecord outer;
    outer.parameters.descriptorParametersVersion = version;
    simulator::DescriptorRecord reading;
    reading.read = simulator::readDescriptorProcs(version);
    simulator::DescriptorRecord writing;
    writing.write = simulator::writeDescriptorProcs(version);
    for (const simulator::DescriptorRecord* record : {&outer, &reading, &writing}) {
      gAlert.clear();
      EXPECT_FALSE(WarnHostDescriptorAvailable(&record->parameters)) << version;
      EXPECT_EQ(gAlert, "4.0.") << version;
    }
  }
}

TEST(CallbackWarnings, Show2Point501ForAMissingProcedureToDisplayPixels) {
  EXPECT_FALSE(WarnHostDisplayPixelsAvailable(nullptr));
  EXPECT_EQ(gAlert, "2.501.");
}

TEST(CallbackWarnings, Show3Point0ForAMissingProcedureToAdvanceTheState) {
  EXPECT_FALSE(WarnHostAdvanceStateAvailable(nullptr));
  EXPECT_EQ(gAlert, "3.0.");
}

TEST(CallbackWarnings, Show2Point5ForMissingColourServices) {
  EXPECT_FALSE(WarnHostColorServicesAvailable(nullptr));
  EXPECT_EQ(gAlert, "2.5.");
}

}  // namespace
