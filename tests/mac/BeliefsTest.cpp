#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <ostream>
#include <set>
#include <string>

#include "mac/Beliefs.h"
#include "tests/mac/ProbeInputs.h"

namespace {

using namespace mrvmac;
using Answer = std::optional<bool>;

Answer answer(const std::string& name, const Observations& seen) {
  for (const Belief& belief : beliefs()) {
    if (name == belief.name) return belief.holds(seen);
  }
  ADD_FAILURE() << "no belief " << name;
  return std::nullopt;
}

/// What a Mac shows on which everything is as believed.
Observations asBelieved() {
  Observations seen;
  seen.permission = seen.tapInstalled = seen.bundleLoads = seen.frameworkFound = true;
  seen.startupResult = seen.shutdownResult = 0;
  seen.installedOnMain = false;
  seen.messagesSent = seen.messagesDelivered = 26;
  seen.postedTwice = -9860;
  seen.installedTwice = -9866;
  seen.missingParameter = -9870;
  seen.taskCreated = 0;
  seen.postedEventReachesMain = seen.highPriorityFirst = true;
  seen.windowIsMain = seen.contentRectFits = seen.pendingAfterMarking = true;
  seen.pendingAfterDrawing = false;
  seen.mouseCountsUpward = seen.refreshRectsCountDownward = seen.ticksAreInside = true;
  seen.redraws = 20;
  seen.refreshes = 18;
  seen.layout = "com.apple.keylayout.US";
  seen.preferencesFolder = "/Users/someone/Library/Preferences";
  seen.expected = probeInputs();
  seen.atTap = without(seen.expected, InputKind::kTypedKey);
  seen.inWindow = without(seen.expected, InputKind::kKey);
  return seen;
}

TEST(Beliefs, HoldOnAMacThatIsAsBelieved) {
  for (const Belief& belief : beliefs()) {
    EXPECT_EQ(belief.holds(asBelieved()), Answer(true)) << belief.name;
  }
}

TEST(Beliefs, AreNotTestedIfNothingWasObserved) {
  for (const Belief& belief : beliefs()) {
    EXPECT_EQ(belief.holds(Observations{}), std::nullopt) << belief.name;
  }
}

TEST(Beliefs, HaveDifferentNamesAndASentence) {
  std::set<std::string> names;
  for (const Belief& belief : beliefs()) {
    EXPECT_TRUE(names.insert(belief.name).second) << belief.name;
    EXPECT_EQ(std::string(belief.sentence).back(), '.') << belief.name;
  }
}

struct Contradiction {
  const char* belief;
  std::function<void(Observations&)> change;
};

void PrintTo(const Contradiction& contradiction, std::ostream* out) {
  *out << contradiction.belief;
}

class BeliefsContradicted : public testing::TestWithParam<Contradiction> {};

TEST_P(BeliefsContradicted, AreAnsweredWithNo) {
  Observations seen = asBelieved();
  GetParam().change(seen);
  EXPECT_EQ(answer(GetParam().belief, seen), Answer(false));
}

void dropFlags(Observations& seen) {
  for (Input& input : seen.atTap) input.flags = 0;
}

void dropReleases(Observations& seen) {
  std::erase_if(seen.atTap,
                [](const Input& input) { return input.kind == InputKind::kKey && !input.down; });
}

const Contradiction kContradictions[] = {
    {"bundle-loads", [](Observations& seen) { seen.bundleLoads = false; }},
    {"weak-framework", [](Observations& seen) { seen.frameworkFound = false; }},
    {"startup", [](Observations& seen) { seen.startupResult = 1348563565; }},
    {"startup", [](Observations& seen) { seen.shutdownResult = 1348563565; }},
    {"device-thread", [](Observations& seen) { seen.installedOnMain = true; }},
    {"task-created", [](Observations& seen) { seen.taskCreated = -50; }},
    {"device-loop", [](Observations& seen) { seen.messagesDelivered = 25; }},
    {"hand-over", [](Observations& seen) { seen.postedEventReachesMain = false; }},
    {"priority", [](Observations& seen) { seen.highPriorityFirst = false; }},
    {"posted-twice", [](Observations& seen) { seen.postedTwice = 0; }},
    {"installed-twice", [](Observations& seen) { seen.installedTwice = 0; }},
    {"missing-parameter", [](Observations& seen) { seen.missingParameter = 0; }},
    {"main-window", [](Observations& seen) { seen.windowIsMain = false; }},
    {"content-rectangle", [](Observations& seen) { seen.contentRectFits = false; }},
    {"pending-marked", [](Observations& seen) { seen.pendingAfterMarking = false; }},
    {"pending-drawn", [](Observations& seen) { seen.pendingAfterDrawing = true; }},
    {"mouse-upward", [](Observations& seen) { seen.mouseCountsUpward = false; }},
    {"refreshes", [](Observations& seen) { seen.refreshes = 0; }},
    {"refreshes-downward", [](Observations& seen) { seen.refreshRectsCountDownward = false; }},
    {"layout", [](Observations& seen) { seen.layout = "com.apple.inputmethod.Kotoeri"; }},
    {"preferences", [](Observations& seen) { seen.preferencesFolder = "/Users/someone"; }},
    {"ticks-at-tap", [](Observations& seen) { seen.atTap.clear(); }},
    {"ticks-in-window", [](Observations& seen) { seen.inWindow.clear(); }},
    {"ticks-inside", [](Observations& seen) { seen.ticksAreInside = false; }},
    {"keys-at-tap", [](Observations& seen) { seen.atTap = only(seen.atTap, InputKind::kWheel); }},
    {"flags", dropFlags},
    {"keys-up", dropReleases},
    {"typed-keys",
     [](Observations& seen) { seen.inWindow = only(seen.inWindow, InputKind::kWheel); }},
    {"as-simulated", [](Observations& seen) { seen.atTap.pop_back(); }},
};

INSTANTIATE_TEST_SUITE_P(, BeliefsContradicted, testing::ValuesIn(kContradictions),
                         [](const auto& test) {
                           std::string name = test.param.belief;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name + "_" + std::to_string(test.index);
                         });

TEST(BeliefsContradictedTable, HasEveryBelief) {
  for (const Belief& belief : beliefs()) {
    const auto same = [&](const Contradiction& row) {
      return std::string(row.belief) == belief.name;
    };
    EXPECT_TRUE(std::any_of(std::begin(kContradictions), std::end(kContradictions), same))
        << belief.name;
  }
}

TEST(BeliefsAboutInput, AreNotTestedWithoutThePermission) {
  Observations seen = asBelieved();
  seen.permission = false;
  seen.atTap.clear();
  seen.inWindow.clear();
  for (const char* const name : {"ticks-at-tap", "ticks-in-window", "keys-at-tap", "flags",
                                 "keys-up", "typed-keys", "as-simulated"}) {
    EXPECT_EQ(answer(name, seen), std::nullopt) << name;
  }
}

TEST(BeliefsAboutInput, AtTheTapAreNotTestedWithoutATap) {
  Observations seen = asBelieved();
  seen.tapInstalled = false;
  seen.atTap.clear();
  for (const char* const name : {"ticks-at-tap", "keys-at-tap", "flags", "as-simulated"}) {
    EXPECT_EQ(answer(name, seen), std::nullopt) << name;
  }
  EXPECT_EQ(answer("ticks-in-window", seen), Answer(true));
}

TEST(BeliefsAboutInput, AreNotTestedIfTheScenarioExpectsNone) {
  Observations seen = asBelieved();
  seen.expected.clear();
  for (const char* const name :
       {"ticks-at-tap", "ticks-in-window", "keys-at-tap", "flags", "typed-keys", "as-simulated"}) {
    EXPECT_EQ(answer(name, seen), std::nullopt) << name;
  }
}

TEST(BeliefsAboutRefreshes, AreNotTestedIfNothingWasRedrawn) {
  Observations seen = asBelieved();
  seen.redraws = 0;
  seen.refreshes = 0;
  EXPECT_EQ(answer("refreshes", seen), std::nullopt);
}

TEST(TapComparison, LeavesOutTypedKeys) {
  EXPECT_TRUE(compareAtTap(asBelieved()).equal);
  Observations seen = asBelieved();
  seen.atTap = seen.expected;
  EXPECT_FALSE(compareAtTap(seen).equal);
}

}  // namespace
