#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "suites/HostObjects.h"
#include "suites/Suites.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

using SuiteKey = std::pair<std::string, int>;

/// The names and versions of the holders, in the order of their definitions.
const std::vector<SuiteKey> kTable = {
    {"df135115-c769-11d0-8079-00c04fd7ec47", 5},
    {"df135115-c769-11d0-8079-00c04fd7ec47", 3},
    {"df135115-c769-11d0-8079-00c04fd7ec47", 2},
    {"bc1e4d70-f953-11d0-8d9f-00c04fd5f7ee", 6},
    {"bc1e4d70-f953-11d0-8d9f-00c04fd5f7ee", 4},
    {"bc1e4d70-f953-11d0-8d9f-00c04fd5f7ee", 3},
    {"3eb7c480-8797-11d1-8da7-00c04fd5f7ee", 3},
    {"3eb7c480-8797-11d1-8da7-00c04fd5f7ee", 2},
    {"df135117-c769-11d0-8079-00c04fd7ec47", 3},
    {"df135116-c769-11d0-8079-00c04fd7ec47", 3},
    {"61e608b0-40fd-11d1-8da3-00c04fd5f7ee", 1},
    {"Photoshop UIHooks Suite for Plug-ins", 1},
    {"Photoshop Handle Suite for Plug-ins", 2},
    {"AS ZString Suite", 1},
    {"AS ZString Suite", 2},
    {"SP Access Suite", 3},
    {"Photoshop GetFileList Suite for Plug-ins", 4},
    {"Photoshop Buffer Suite for Plug-ins", 1},
    {"Photoshop Buffer Suite for Plug-ins", 2},
    {"Photoshop Buffer Procs for Plug-ins", 2},
    {"Photoshop ChannelPorts Suite for Plug-ins", 3},
    {"SP Runtime Suite", 5},
    {"Photoshop Property Suite for Plug-ins", 1},
    {"Photoshop Alias Utility Suite", 1},
    {"Photoshop Resource Suite for Plug-ins", 3},
    {"JavaScript Scripting Suite", 2},
};

/// Calls `visit` with each holder, in the order of the table.
template <class Visit>
void forEachHolder(Visit visit) {
  std::apply([&](auto&... holder) { (visit(holder), ...); },
             std::tie(sPSActionDescriptor, sPSActionDescriptor3, sPSActionDescriptor2,
                      sPSActionControl, sPSActionControl4, sPSActionControlOld,
                      sPSBasicActionControl, sPSBasicActionControlOld, sPSActionReference,
                      sPSActionList, sPSRegistry, sPSUIHooks, sPSHandle, sASZString, sASZString2,
                      sSPAccess, sPSFileList, sPSBuffer, sPSBuffer64, sPSBufferProcs,
                      sPSChannelProcs, sSPRuntime, sPSProperty, sPSAlias, sPSResource, sScripting));
}

/// A host that provides every suite, or refuses every suite with `refusal`, and records the calls.
struct RecordingHost {
  static inline std::vector<SuiteKey> acquired, released;
  static inline std::int32_t refusal = 0;

  RecordingHost() {
    acquired.clear();
    released.clear();
    refusal = 0;
    sSPBasic = &suite;
  }
  ~RecordingHost() {
    PIUSuitesRelease();
    sSPBasic = nullptr;
  }

  static SPErr acquire(const char* name, std::int32_t version, const void** table) {
    acquired.emplace_back(name, version);
    if (refusal != 0) return refusal;
    *table = &refusal;
    return 0;
  }
  static SPErr release(const char* name, std::int32_t version) {
    released.emplace_back(name, version);
    return 0;
  }

  SPBasicSuite suite = {acquire, release, nullptr, nullptr, nullptr, nullptr, nullptr};
};

TEST(Suites, KeepTheMembersOfTheirHoldersInOrder) {
  using Holder = AutoSuite<PSActionDescriptorProcs>;
  static_assert(std::is_same_v<decltype(Holder::suite), const PSActionDescriptorProcs*>);
  static_assert(std::is_same_v<decltype(Holder::version), std::int32_t>);
  static_assert(std::is_same_v<decltype(Holder::error), std::int32_t>);
  static_assert(!std::is_polymorphic_v<Holder>);
  Holder holder("name", 1);
  const auto at = [&](const auto& member) {
    return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&holder);
  };
  EXPECT_LT(at(holder.suite), at(holder.version));
  EXPECT_LT(at(holder.version), at(holder.name));
  EXPECT_LT(at(holder.name), at(holder.error));
}

TEST(Suites, StartInTwentySixEmptyHoldersWithNameAndVersion) {
  std::vector<SuiteKey> found;
  forEachHolder([&](auto& holder) {
    EXPECT_EQ(holder.suite, nullptr);
    EXPECT_EQ(holder.error, 0);
    found.emplace_back(holder.name, holder.version);
  });
  EXPECT_EQ(found.size(), 26U);
  EXPECT_EQ(found, kTable);
}

TEST(Suites, AreAcquiredByTheirNameAndVersion) {
  const RecordingHost host;
  forEachHolder([](auto& holder) {
    EXPECT_NE(holder.operator->(), nullptr);
    EXPECT_EQ(holder.error, 0);
  });
  EXPECT_EQ(RecordingHost::acquired, kTable);
}

TEST(Suites, AreReleasedInTheTablesOrderWithRowsTwelveAndThirteenSwapped) {
  const RecordingHost host;
  forEachHolder([](auto& holder) { holder.AcquireSuite(true); });
  PIUSuitesRelease();
  std::vector<SuiteKey> expected = kTable;
  std::swap(expected[11], expected[12]);
  EXPECT_EQ(RecordingHost::released, expected);
  forEachHolder([](auto& holder) { EXPECT_EQ(holder.suite, nullptr); });
}

TEST(Suites, AreNotReleasedBeforeAnyUse) {
  const RecordingHost host;
  PIUSuitesRelease();
  EXPECT_TRUE(RecordingHost::released.empty());
}

TEST(Suites, AreReleasedOnlyIfHeld) {
  const RecordingHost host;
  sPSAlias.AcquireSuite(true);
  sPSHandle.AcquireSuite(true);
  PIUSuitesRelease();
  EXPECT_EQ(RecordingHost::released, (std::vector<SuiteKey>{kTable[12], kTable[23]}));
  PIUSuitesRelease();
  EXPECT_EQ(RecordingHost::released.size(), 2U);
}

TEST(Suites, AreAcquiredAgainAtTheNextUseAfterARelease) {
  const RecordingHost host;
  EXPECT_NE(sPSProperty.operator->(), nullptr);
  PIUSuitesRelease();
  EXPECT_NE(sPSProperty.operator->(), nullptr);
  EXPECT_EQ(RecordingHost::acquired, (std::vector<SuiteKey>{kTable[22], kTable[22]}));
}

TEST(Suites, StayHeldIfThereIsNoBasicSuiteToReleaseThem) {
  const RecordingHost host;
  sPSAlias.AcquireSuite(true);
  const auto* held = sPSAlias.suite;
  SPBasicSuite* basic = sSPBasic;
  sSPBasic = nullptr;
  PIUSuitesRelease();
  EXPECT_EQ(sPSAlias.suite, held);
  sSPBasic = basic;
  EXPECT_TRUE(RecordingHost::released.empty());
}

TEST(Suites, AreReleasedWhenTheirHolderIsDestroyed) {
  const RecordingHost host;
  {
    AutoSuite<PSAliasSuite> holder("of a test", 9);
    holder.AcquireSuite(true);
  }
  {
    const AutoSuite<PSAliasSuite> neverUsed("of a test", 10);
  }
  EXPECT_EQ(RecordingHost::released, (std::vector<SuiteKey>{{"of a test", 9}}));
}

/// Exits with every suite held. The host prints what is released.
void exitHoldingEverySuite() {
  static SPBasicSuite basic = {};
  basic.AcquireSuite = RecordingHost::acquire;
  basic.ReleaseSuite = [](const char* name, std::int32_t version) -> SPErr {
    fmt::print(stderr, "{} {}\n", name, version);
    return 0;
  };
  sSPBasic = &basic;
  forEachHolder([](auto& holder) { holder.AcquireSuite(true); });
  std::exit(0);
}

/// Without the exchange of two rows that PIUSuitesRelease makes.
TEST(Suites, AreReleasedInTheReverseOrderOfTheTableWhenTheProcessEnds) {
  std::string released;
  for (const auto& [name, version] : kTable) {
    released.insert(0, fmt::format("{} {}\n", name, version));
  }
  EXPECT_EXIT(exitHoldingEverySuite(), testing::ExitedWithCode(0), testing::Eq(released));
}

TEST(Suites, AreNotReleasedIfTheirHolderHasNoName) {
  const RecordingHost host;
  {
    AutoSuite<PSAliasSuite> holder("of a test", 9);
    holder.AcquireSuite(true);
    holder.name = nullptr;
  }
  EXPECT_TRUE(RecordingHost::released.empty());
}

TEST(Suites, ThrowTheParameterErrorWithoutABasicSuite) {
  sSPBasic = nullptr;
  try {
    sPSActionDescriptor.operator->();
    FAIL() << "nothing was thrown";
  } catch (std::uint32_t code) {
    EXPECT_EQ(code, 0x5061726DU);
  }
  EXPECT_EQ(sPSActionDescriptor.suite, nullptr);
  EXPECT_EQ(sPSActionDescriptor.error, 0x5061726D);
}

TEST(Suites, StoreARefusalAndThrowItAsAnUnsignedCode) {
  const RecordingHost host;
  for (const std::int32_t code : {-1, -30900, 0x53214364, 1}) {
    RecordingHost::refusal = code;
    try {
      sPSActionList.operator->();
      FAIL() << "nothing was thrown";
    } catch (std::uint32_t thrown) {
      EXPECT_EQ(thrown, static_cast<std::uint32_t>(code));
    }
    EXPECT_EQ(sPSActionList.error, code);
    EXPECT_EQ(sPSActionList.suite, nullptr);
  }
}

TEST(Suites, DoNotThrowARefusalUnlessAsked) {
  const RecordingHost host;
  RecordingHost::refusal = -5;
  EXPECT_NO_THROW(sPSActionList.AcquireSuite(false));
  EXPECT_EQ(sPSActionList.error, -5);
}

TEST(Suites, AreAskedForAgainAtTheNextUseAfterARefusal) {
  const RecordingHost host;
  RecordingHost::refusal = -5;
  EXPECT_THROW(sPSActionList.operator->(), std::uint32_t);
  EXPECT_EQ(RecordingHost::acquired.size(), 1U);  // not retried immediately
  RecordingHost::refusal = 0;
  EXPECT_NE(sPSActionList.operator->(), nullptr);
  EXPECT_EQ(sPSActionList.error, 0);
  EXPECT_EQ(RecordingHost::acquired.size(), 2U);
}

TEST(Suites, AreAcquiredOnceForTwoUses) {
  Machine machine;
  for (int use = 0; use < 2; ++use) {
    ActionDescriptor descriptor;
    EXPECT_EQ(sPSActionDescriptor->Make(descriptor.out()), 0);
  }
  EXPECT_EQ(machine.lines("suite").size(), 1U);
}

TEST(Suites, ThrowTheHostsCodeForAnUnknownVersion) {
  Machine machine;
  AutoSuite<PSAliasSuite> holder("Photoshop Alias Utility Suite", 77);
  EXPECT_THROW(holder.operator->(), std::uint32_t);
  EXPECT_NE(holder.error, 0);
  EXPECT_EQ(theHost().suitesHeld(), 0);
}

}  // namespace
