#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mac/Report.h"

namespace {

using mrvmac::Input;
using mrvmac::Observations;
using mrvmac::writeReport;
using testing::HasSubstr;
using testing::Not;

TEST(MacReport, BeginsWithTheSystem) {
  Observations seen;
  seen.system = "a system (1A2)";
  seen.processor = "a processor";
  seen.permission = false;
  EXPECT_THAT(writeReport(seen), testing::StartsWith("Report of mrvmac\n"
                                                     "  system      a system (1A2)\n"
                                                     "  processor   a processor\n"
                                                     "  permission  no\n"
                                                     "\nBeliefs\n"));
}

TEST(MacReport, AnswersEachBelief) {
  Observations seen;
  seen.bundleLoads = true;
  seen.windowIsMain = false;
  const std::string report = writeReport(seen);
  EXPECT_THAT(report, HasSubstr("\n  yes         bundle-loads        The system loads the bundle"));
  EXPECT_THAT(report, HasSubstr("\n  no          main-window         The front window"));
  EXPECT_THAT(report, HasSubstr("\n  not tested  flags               Wheel events arrive"));
}

TEST(MacReport, ListsInputsAndTheFirstDifference) {
  Observations seen;
  seen.expected = {Input{.vertical = 1}, Input{.vertical = 2}};
  seen.atTap = {Input{.vertical = 1}};
  const std::string report = writeReport(seen);
  EXPECT_THAT(report, HasSubstr("\n  inputs expected 2, at the tap 1, in the window 0\n"
                                "  first difference: input 2 of 2: expected wheel 2 0, "
                                "arrived nothing\n"));
  EXPECT_THAT(report, HasSubstr("\nExpected\n  wheel 1 0\n  wheel 2 0\n"
                                "\nArrived at the tap\n  wheel 1 0\n"
                                "\nArrived in the window\n  none\n"));
}

TEST(MacReport, CountsMessagesAndRedraws) {
  Observations seen;
  seen.messagesSent = 7;
  seen.redraws = 3;
  seen.misuses = {"leaked: descriptor 1"};
  EXPECT_THAT(writeReport(seen),
              HasSubstr("\nCounts\n  device messages sent 7, delivered not counted\n"
                        "  redraws 3, refresh callbacks not counted\n"
                        "  inputs expected 0, at the tap 0, in the window 0\n"
                        "  misuse: leaked: descriptor 1\n"));
}

TEST(MacReport, NamesNoDifferenceIfThereIsNone) {
  EXPECT_THAT(writeReport(Observations{}), Not(HasSubstr("first difference")));
}

TEST(MacExitStatus, IsZeroUntilABeliefFails) {
  Observations seen;
  EXPECT_EQ(mrvmac::exitStatus(seen), 0);
  seen.bundleLoads = true;
  EXPECT_EQ(mrvmac::exitStatus(seen), 0);
  seen.windowIsMain = false;
  EXPECT_EQ(mrvmac::exitStatus(seen), 1);
}

}  // namespace
