#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "device/DeviceMessages.h"
#include "device/MrvDeviceEvents.h"
#include "simulator/macos/TextInput.h"
#include "tests/support/DeviceRecords.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr std::uint16_t kClient = 7;
constexpr std::uint64_t kTime = 0x0102030405060708;

Json postedLine(int kind, Json parameters) {
  parameters.push_back({"ttim", "comp", kTime});
  return {{"t", 0},       {"what", "posted"}, {"class", "mrvE"},
          {"kind", kind}, {"priority", 2},    {"parameters", std::move(parameters)}};
}

Json shorts(const std::vector<std::pair<const char*, int>>& values) {
  Json list = Json::array();
  for (const auto& [name, value] : values) list.push_back({name, "shor", value});
  return list;
}

Json axesLine(const std::array<int, 6>& v) {
  return postedLine(2, shorts({{"tpnx", v[0]},
                               {"tpny", v[1]},
                               {"tpnz", v[2]},
                               {"trtx", v[3]},
                               {"trty", v[4]},
                               {"trtz", v[5]}}));
}

Json releaseLine(int button) { return postedLine(1, shorts({{"tbtn", button}, {"tbts", 0}})); }

Json pressLine(int button, std::uint32_t modifiers) {
  Json parameters = {{"kmod", "magn", modifiers}};
  parameters.push_back({"tbtn", "shor", button});
  parameters.push_back({"tbts", "shor", 1});
  return postedLine(1, std::move(parameters));
}

class DeviceMessages : public testing::Test {
 protected:
  DeviceMessages() {
    MrvDeviceEvents::m_clientID = kClient;
    MrvDeviceEvents::m_mainEventQueue = GetMainEventQueue();
    MrvDeviceEvents::m_appIsActive = true;
  }

  /// Relays one message and returns the lines of what it posts. Dispatches the posted events.
  std::vector<Json> relay(MoravinDeviceState record,
                          std::uint32_t type = kMoravinMessageDeviceState) {
    record.time = kTime;
    machine.drain();
    MrvDeviceEvents::messageHandlerProc(99, type, &record);
    std::vector<Json> posted = machine.drain();
    while (theEventManager().dispatchNext()) {
    }
    EXPECT_EQ(theEventManager().live(), 0U);
    return posted;
  }

  static std::array<int, 6> relayedAxes() {
    std::array<int, 6> values;
    std::copy(std::begin(axisData), std::end(axisData), values.begin());
    return values;
  }

  Machine machine;
};

using Lines = std::vector<Json>;

TEST_F(DeviceMessages, StartWithZeroAxisData) {
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{}));
  EXPECT_FALSE(gIn3DTool);
}

TEST_F(DeviceMessages, PostNothingIfTheirTypeIsAnother) {
  for (const std::uint32_t type : {0U, 1U, 0x33645353U, 0x52536433U, 0x33445352U}) {
    EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6}), type), Lines{});
  }
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{}));
}

TEST_F(DeviceMessages, LeaveTheRecordUnreadIfTheirTypeIsAnother) {
  MrvDeviceEvents::messageHandlerProc(1, 0x33645353, nullptr);
  EXPECT_TRUE(machine.lines().empty());
}

TEST_F(DeviceMessages, PostNothingIfTheyAreForAnotherClient) {
  for (const int other : {0, 6, 8, 7 + 256, 0xFFFF}) {
    const auto client = static_cast<std::uint16_t>(other);
    EXPECT_EQ(relay(axesRecord(client, {1, 2, 3, 4, 5, 6})), Lines{});
    EXPECT_EQ(relay(buttonRecord(client, 1, 1)), Lines{});
    EXPECT_EQ(relay(commandRecord(client, 1)), Lines{});
  }
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{}));
}

TEST_F(DeviceMessages, PassWithoutRegistrationOnlyIfTheyAreForClientZero) {
  MrvDeviceEvents::m_clientID = 0;
  EXPECT_EQ(relay(axesRecord(1, {1, 0, 0, 0, 0, 0})), Lines{});
  EXPECT_EQ(relay(axesRecord(0, {1, 0, 0, 0, 0, 0})), Lines{axesLine({1, 0, 0, 0, 0, 0})});
}

TEST_F(DeviceMessages, CompareTheClientIdWithoutSign) {
  MrvDeviceEvents::m_clientID = 0xFFFF;
  EXPECT_EQ(relay(commandRecord(0xFFFF, 3)), Lines{postedLine(5, shorts({{"tpac", 3}}))});
}

TEST_F(DeviceMessages, SwapTheSecondAndThirdTranslationsAndRotations) {
  EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6})), Lines{axesLine({1, 3, 2, 4, 6, 5})});
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{1, 3, 2, 4, 6, 5}));
}

TEST_F(DeviceMessages, PassAxisValuesUnscaledUpToTheirLimits) {
  EXPECT_EQ(relay(axesRecord(kClient, {-32768, 32767, -1, 1, -32768, 32767})),
            Lines{axesLine({-32768, -1, 32767, 1, 32767, -32768})});
}

TEST_F(DeviceMessages, PostSixZerosForAxesWhileTheHostIsInactive) {
  relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6}));
  MrvDeviceEvents::m_appIsActive = false;
  EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6})), Lines{axesLine({0, 0, 0, 0, 0, 0})});
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{}));
  EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6})).size(), 1U);
}

TEST_F(DeviceMessages, PassButtonsAndCommandsWhileTheHostIsInactive) {
  MrvDeviceEvents::m_appIsActive = false;
  EXPECT_EQ(relay(buttonRecord(kClient, 4, 1)), Lines{pressLine(4, 0)});
  EXPECT_EQ(relay(commandRecord(kClient, 4)), Lines{postedLine(5, shorts({{"tpac", 4}}))});
}

TEST_F(DeviceMessages, UpdateAxisDataButPostNoAxesInA3DTool) {
  gIn3DTool = true;
  EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6})), Lines{});
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{1, 3, 2, 4, 6, 5}));
  MrvDeviceEvents::m_appIsActive = false;
  EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6})), Lines{});
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{}));
  // Buttons and commands are still posted.
  EXPECT_EQ(relay(buttonRecord(kClient, 1, 0)).size(), 1U);
  EXPECT_EQ(relay(commandRecord(kClient, 1)).size(), 1U);
  gIn3DTool = false;
}

TEST_F(DeviceMessages, ReportTheLastPressedButtonAtAReleaseAndModifiersOnlyAtAPress) {
  setKeyModifiers(0x0900);
  EXPECT_EQ(relay(buttonRecord(kClient, 7, 1)), Lines{pressLine(7, 0x0900)});
  EXPECT_EQ(relay(buttonRecord(kClient, 0, 0)), Lines{releaseLine(7)});
}

TEST_F(DeviceMessages, IgnoreTheButtonWordOfARelease) {
  relay(buttonRecord(kClient, 7, 1));
  EXPECT_EQ(relay(buttonRecord(kClient, 9, 0)), Lines{releaseLine(7)});
  EXPECT_EQ(relay(buttonRecord(kClient, 9, 0)), Lines{releaseLine(7)});
}

TEST_F(DeviceMessages, ReportButtonZeroForAReleaseBeforeAnyPress) {
  EXPECT_EQ(relay(buttonRecord(kClient, 5, 0)), Lines{releaseLine(0)});
}

TEST_F(DeviceMessages, TreatAnyNonZeroValueAsAPress) {
  for (const std::uint32_t value : {1U, 0x80U, 0x10000U, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(relay(buttonRecord(kClient, 2, value)), Lines{pressLine(2, 0)}) << value;
  }
}

TEST_F(DeviceMessages, ReportButtonWordsAboveTheSignedRangeAsNegative) {
  EXPECT_EQ(relay(buttonRecord(kClient, 0x8000, 1)), Lines{pressLine(-32768, 0)});
  EXPECT_EQ(relay(buttonRecord(kClient, 0xFFFF, 1)), Lines{pressLine(-1, 0)});
}

TEST_F(DeviceMessages, PassAllThirtyTwoBitsOfTheModifiers) {
  setKeyModifiers(0xFFFFFFFF);
  EXPECT_EQ(relay(buttonRecord(kClient, 1, 1)), Lines{pressLine(1, 0xFFFFFFFF)});
}

TEST_F(DeviceMessages, PassTheLowSixteenBitsOfACommand) {
  EXPECT_EQ(relay(commandRecord(kClient, 0x00010004)), Lines{postedLine(5, shorts({{"tpac", 4}}))});
  EXPECT_EQ(relay(commandRecord(kClient, 0xFFFF0000)), Lines{postedLine(5, shorts({{"tpac", 0}}))});
  EXPECT_EQ(relay(commandRecord(kClient, 0x00018000)),
            Lines{postedLine(5, shorts({{"tpac", -32768}}))});
}

TEST_F(DeviceMessages, PostNothingForOtherCommands) {
  for (std::uint16_t command = 0; command < 300; ++command) {
    if (command == 2 || command == 3 || command == 10) continue;
    EXPECT_EQ(relay(deviceRecord(kClient, command)), Lines{}) << command;
  }
  EXPECT_EQ(relay(deviceRecord(kClient, 0xFFFF)), Lines{});
  EXPECT_EQ(relay(deviceRecord(kClient, 0x0302)), Lines{});
}

TEST_F(DeviceMessages, AreReadAtTheOffsetsOfTheirFields) {
  // All bytes differ, so a field read at a wrong offset has a wrong value.
  unsigned char bytes[sizeof(MoravinDeviceState)];
  for (std::size_t i = 0; i < sizeof bytes; ++i) bytes[i] = static_cast<unsigned char>(0x20 + i);
  const std::uint16_t command = kMoravinCommandAxes;
  std::memcpy(bytes + 4, &command, sizeof command);
  MrvDeviceEvents::m_clientID = 0x2322;
  MrvDeviceEvents::messageHandlerProc(0, 0x33645352, bytes);
  ASSERT_EQ(machine.lines().size(), 1U);
  const Json& parameters = machine.lines()[0]["parameters"];
  const int values[] = {0x3F3E, 0x4342, 0x4140, 0x4544, 0x4948, 0x4746};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(parameters[i][2], values[i]);
  EXPECT_EQ(parameters[6], Json({"ttim", "comp", 0x33323130'2F2E2D2C}));
  while (theEventManager().dispatchNext()) {
  }
}

TEST_F(DeviceMessages, PassANegativeTimeStampUnchanged) {
  MoravinDeviceState record = commandRecord(kClient, 1);
  record.time = 0xFFFFFFFFFFFFFFFE;
  MrvDeviceEvents::messageHandlerProc(0, kMoravinMessageDeviceState, &record);
  EXPECT_EQ(machine.lines()[0]["parameters"][1], Json({"ttim", "comp", -2}));
  while (theEventManager().dispatchNext()) {
  }
}

TEST_F(DeviceMessages, AreDroppedOnlyIfTheirOwnEventCannotBeCreated) {
  for (const MoravinDeviceState& record :
       {axesRecord(kClient, {1, 2, 3, 4, 5, 6}), buttonRecord(kClient, 1, 1),
        commandRecord(kClient, 1)}) {
    theEventManager().failCreations(1);
    EXPECT_EQ(relay(record), Lines{});
    EXPECT_EQ(relay(record).size(), 1U);
  }
}

TEST_F(DeviceMessages, DoNotRememberAPressWhoseEventCannotBeCreated) {
  relay(buttonRecord(kClient, 3, 1));
  theEventManager().failCreations(1);
  relay(buttonRecord(kClient, 7, 1));
  EXPECT_EQ(relay(buttonRecord(kClient, 0, 0)), Lines{releaseLine(3)});
}

TEST_F(DeviceMessages, UpdateAxisDataEvenIfTheEventCannotBeCreated) {
  theEventManager().failCreations(1);
  EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6})), Lines{});
  EXPECT_EQ(relayedAxes(), (std::array<int, 6>{1, 3, 2, 4, 6, 5}));
}

TEST_F(DeviceMessages, LeakNothingIfTheQueueRefusesTheEvent) {
  MrvDeviceEvents::m_mainEventQueue = nullptr;
  EXPECT_EQ(relay(axesRecord(kClient, {1, 2, 3, 4, 5, 6})), Lines{});
}

}  // namespace
