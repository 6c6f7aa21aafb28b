#include <gtest/gtest.h>

#include "mrvsim/live/Devices.h"
#include "tests/mrvsim/live/Screenless.h"

namespace {

using namespace simulator::live;

/// A joystick that exists in SDL alone.
class DevicesOfSdl : public testing::Test {
 protected:
  DevicesOfSdl() : index_(SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_UNKNOWN, 6, 2, 0)) {}

  /// Passes all events on; returns whether one of them was news.
  bool takeEvents() {
    bool isNews = false;
    SDL_Event event;
    while (SDL_PollEvent(&event) == 1) isNews = devices_.take(event) || isNews;
    return isNews;
  }

  void move(int axis, Sint16 value) {
    SDL_Joystick* const joystick = SDL_JoystickFromInstanceID(devices_.joysticks()[0].number);
    SDL_JoystickSetVirtualAxis(joystick, axis, value);
    SDL_JoystickUpdate();
  }

  testing_support::Screenless sdl_;
  int index_;
  Devices devices_{AxisMaps()};
};

TEST_F(DevicesOfSdl, AreThereWhilePluggedIn) {
  ASSERT_GE(index_, 0);
  EXPECT_TRUE(takeEvents());
  ASSERT_EQ(devices_.joysticks().size(), 1U);
  EXPECT_EQ(devices_.joysticks()[0].axes, 6U);
  SDL_JoystickDetachVirtual(index_);
  EXPECT_TRUE(takeEvents());
  EXPECT_TRUE(devices_.joysticks().empty());
  EXPECT_EQ(devices_.deflection(), Deflection{});
}

TEST_F(DevicesOfSdl, MoveTheCapByTheirAxes) {
  takeEvents();
  move(4, 32767);
  EXPECT_TRUE(takeEvents());
  EXPECT_EQ(devices_.deflection(), (Deflection{0, 0, 0, 0, 1, 0}));
}

TEST_F(DevicesOfSdl, MoveWhatTheUserChose) {
  takeEvents();
  AxisMap map;
  map.sources[kPush] = {4, true};
  devices_.setMap(0, map);
  move(4, 32767);
  takeEvents();
  EXPECT_EQ(devices_.deflection(), (Deflection{0, -1, 0, 0, 0, 0}));
  EXPECT_EQ(devices_.maps().find(devices_.joysticks()[0].identifier), map);
}

}  // namespace
