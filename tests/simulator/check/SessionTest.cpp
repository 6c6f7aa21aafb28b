#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/check/Session.h"
#include "simulator/scenario/ScenarioReader.h"

namespace {

using namespace simulator;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Session, FindsItsLinesByWhatTheyAre) {
  const Json first = {{"what", "result"}, {"value", 0}};
  const Json misuse = {{"what", "misuse"}, {"text", "bad"}};
  const Json last = {{"what", "result"}, {"value", 0x5061726D}};
  const Session session = {.lines = {first, misuse, last}};
  EXPECT_THAT(session.of("result"), ElementsAre(first, last));
  EXPECT_THAT(session.of("results"), IsEmpty());
  EXPECT_THAT(session.results(), ElementsAre(0U, 0x5061726DU));
  EXPECT_THAT(session.misuses(), ElementsAre("bad"));
}

TEST(Session, HasAWholeDayThatIsAScenario) {
  const Scenario day = parseScenario(std::string(R"({"steps": [)") + kWholeDay + "]}", "day");
  ASSERT_EQ(day.steps.size(), 20U);
  EXPECT_EQ(std::get<CallStep>(day.steps.front().action).selector, "Startup");
  EXPECT_EQ(std::get<CallStep>(day.steps.back().action).selector, "Shutdown");
}

}  // namespace
