#include <gtest/gtest.h>

#include <cstdlib>

#include "mrvsim/live/AxisMap.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator::live;

AxisMap sampleMap() {
  AxisMap map;
  map.sources[kPush] = {2, true};
  map.sources[kTwist] = {0, false};
  map.deadZone = 0.25;
  return map;
}

TEST(AxisMap, StretchesWhatIsBeyondTheDeadZone) {
  const Deflection cap = sampleMap().apply({0.25, 0.9, 0.625});
  EXPECT_EQ(cap[kTwist], 0.0);
  EXPECT_DOUBLE_EQ(cap[kPush], -0.5);
  EXPECT_DOUBLE_EQ(sampleMap().apply({1, 0, -1})[kPush], 1.0);
}

TEST(AxisMap, LeavesAxesThatTheDeviceLacksAtRest) {
  EXPECT_EQ(sampleMap().apply({}), Deflection{});
}

TEST(AxisMap, TakesSixAxesInTheirOrder) {
  const AxisMap map = guessedMap(6, false);
  for (int axis = 0; axis < 6; ++axis) {
    EXPECT_EQ(map.sources[static_cast<std::size_t>(axis)].axis, axis);
  }
}

TEST(AxisMap, GivesAGamepadsSticksTheFourMotionsThatAct) {
  const AxisMap map = guessedMap(6, true);
  EXPECT_EQ(map.sources[kSideways], (AxisSource{0, false}));
  EXPECT_EQ(map.sources[kUpward], (AxisSource{1, true}));
  EXPECT_EQ(map.sources[kTwist], (AxisSource{3, false}));
  EXPECT_EQ(map.sources[kPush], (AxisSource{4, true}));
}

TEST(AxisMap, UsesEveryAxisOfAPlainJoystick) {
  const AxisMap map = guessedMap(3, false);
  EXPECT_EQ(map.sources[kSideways].axis, 0);
  EXPECT_EQ(map.sources[kPush].axis, 1);
  EXPECT_EQ(map.sources[kTwist].axis, 2);
}

TEST(AxisMaps, AreReadAsTheyWereWritten) {
  const testing_support::TemporaryFolder folder;
  const std::string file = folder.file("new/folder/devices.json");
  AxisMaps maps;
  maps.set("030000", sampleMap());
  maps.save(file);
  EXPECT_EQ(AxisMaps::load(file).find("030000"), sampleMap());
  EXPECT_EQ(AxisMaps::load(file).find("other"), std::nullopt);
}

TEST(AxisMaps, AreNoneWithoutAFile) {
  EXPECT_EQ(AxisMaps::load("/none/devices.json").find("a"), std::nullopt);
}

std::string refusalOf(const std::string& text) {
  try {
    AxisMaps::parse(text, "d.json");
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "accepted";
}

TEST(AxisMaps, AreRefusedWithThePlaceAndWhatIsAllowed) {
  const std::string end = "; remove it to begin with guessed axes";
  EXPECT_EQ(refusalOf("{"), "d.json: is not JSON" + end);
  EXPECT_EQ(refusalOf("{}"), "d.json: : lacks the field \"devices\"" + end);
  EXPECT_EQ(refusalOf(R"({"devices": {"a": {"axes": [1]}}})"),
            "d.json: /devices/a/axes: must be a list of six" + end);
  const std::string five = "null, null, null, null, null";
  EXPECT_EQ(refusalOf(R"({"devices": {"a": {"axes": [{"axis": 99, "inverted": true}, )" + five +
                      R"(], "deadZone": 0}}})"),
            "d.json: /devices/a/axes/0/axis: must be from 0 to 63" + end);
  EXPECT_EQ(refusalOf(R"({"devices": {"a": {"axes": [{"axis": 9, "inverted": 1}, )" + five +
                      R"(], "deadZone": 0}}})"),
            "d.json: /devices/a/axes/0/inverted: must be true or false" + end);
  EXPECT_EQ(refusalOf(R"({"devices": {"a": {"axes": [null, )" + five + R"(], "deadZone": 2}}})"),
            "d.json: /devices/a/deadZone: must be from 0 to 0.9" + end);
}

TEST(AxisMaps, CannotBeSavedInAFolderThatIsAFile) {
  const testing_support::TemporaryFolder folder;
  testing_support::writeFile(folder.file("file"), "");
  EXPECT_THROW(AxisMaps().save(folder.file("file/devices.json")), std::runtime_error);
}

TEST(AxisMaps, LieInTheUsersConfiguration) {
  setenv("HOME", "/home/x", 1);
  setenv("XDG_CONFIG_HOME", "/config", 1);
  EXPECT_EQ(axisMapsFile(), "/config/mrvphotoshop/devices.json");
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(axisMapsFile(), "/home/x/.config/mrvphotoshop/devices.json");
  unsetenv("HOME");
  EXPECT_EQ(axisMapsFile(), "");
}

}  // namespace
