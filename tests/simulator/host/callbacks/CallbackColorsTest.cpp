#include <algorithm>
#include <array>

#include "simulator/host/callbacks/CallbackRecords.h"
#include "tests/hostutil/CallbackHost.h"

namespace {

using hostutil_test::CallbackTest;

struct Conversion {
  int16 space;
  std::array<int16, 4> components;
};

class CallbackColors : public CallbackTest {
 protected:
  OSErr convert(int16 from, std::array<int16, 4>& components, int16 to) {
    ColorServicesInfo info = {};
    info.infoSize = sizeof info;
    info.selector = plugIncolorServicesConvertColor;
    info.sourceSpace = from;
    info.resultSpace = to;
    std::copy(components.begin(), components.end(), info.colorComponents);
    const OSErr result = simulator::colorServicesProc()(&info);
    std::copy_n(info.colorComponents, 4, components.begin());
    return result;
  }
};

TEST_F(CallbackColors, ConvertOrangeToEverySpaceAndBack) {
  const Conversion orange[] = {{plugIncolorServicesHSBSpace, {30, 255, 255, 0}},
                               {plugIncolorServicesHSLSpace, {30, 255, 128, 0}},
                               {plugIncolorServicesCMYKSpace, {0, 128, 255, 0}}};
  for (const Conversion& expected : orange) {
    std::array<int16, 4> color = {255, 127, 0, 0};
    EXPECT_EQ(convert(plugIncolorServicesRGBSpace, color, expected.space), 0);
    EXPECT_EQ(color, expected.components) << expected.space;
    EXPECT_EQ(convert(expected.space, color, plugIncolorServicesRGBSpace), 0);
    EXPECT_EQ(color[0], 255) << expected.space;
    EXPECT_NEAR(color[1], 127, 1) << expected.space;
    EXPECT_NEAR(color[2], 0, 1) << expected.space;
  }
}

TEST_F(CallbackColors, GiveGreysNoHue) {
  std::array<int16, 4> color = {100, 0, 0, 0};
  EXPECT_EQ(convert(plugIncolorServicesGraySpace, color, plugIncolorServicesHSBSpace), 0);
  EXPECT_EQ(color, (std::array<int16, 4>{0, 0, 100, 0}));
  EXPECT_EQ(convert(plugIncolorServicesHSBSpace, color, plugIncolorServicesGraySpace), 0);
  EXPECT_EQ(color[0], 100);
}

TEST_F(CallbackColors, RefuseUnknownSpacesAndSamples) {
  std::array<int16, 4> color = {};
  EXPECT_EQ(convert(plugIncolorServicesRGBSpace, color, plugIncolorServicesLabSpace), -50);
  EXPECT_EQ(convert(plugIncolorServicesXYZSpace, color, plugIncolorServicesRGBSpace), -50);
  ColorServicesInfo info = {};
  EXPECT_EQ(simulator::colorServicesProc()(&info), -50);
  info.infoSize = sizeof info;
  info.selector = plugIncolorServicesSamplePoint;
  EXPECT_EQ(simulator::colorServicesProc()(&info), errInvalidSamplePoint);
}

}  // namespace
