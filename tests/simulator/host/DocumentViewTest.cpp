#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "simulator/host/DocumentView.h"
#include "simulator/host/Host.h"
#include "simulator/macos/TextInput.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

class DocumentViewRedraw : public testing::Test {
 protected:
  DocumentViewRedraw() { CGRegisterScreenRefreshCallback(keep, &reported_); }
  ~DocumentViewRedraw() override { CGUnregisterScreenRefreshCallback(keep, &reported_); }

  static void keep(std::uint32_t count, const CGRect* rects, void* reported) {
    static_cast<std::vector<CGRect>*>(reported)->assign(rects, rects + count);
  }

  /// Redraws a window with this content and returns the one rectangle that was reported.
  CGRect redraw(const CGRect& content) {
    server_.window().content = content;
    theDocumentView().redraw();
    EXPECT_EQ(reported_.size(), 1U);
    return reported_.empty() ? CGRect{} : reported_[0];
  }

  testing_support::Machine machine_;
  WindowServer& server_ = theWindowServer();
  std::vector<CGRect> reported_;
};

TEST_F(DocumentViewRedraw, IsReportedWithYDownwardFromTheTopOfTheScreen) {
  const CGRect upper = redraw({{100.5, 700}, {800, 150.25}});
  EXPECT_EQ(upper.origin.x, 100.5);
  EXPECT_EQ(upper.origin.y, 49.75);
  EXPECT_EQ(upper.size.width, 800);
  EXPECT_EQ(upper.size.height, 150.25);
  server_.screen.size.height = 1000;
  EXPECT_EQ(redraw({{0, 0}, {10, 300}}).origin.y, 700);
  EXPECT_EQ(redraw({{0, 900}, {10, 300}}).origin.y, -200);
}

TEST_F(DocumentViewRedraw, EndsThePendingUpdateOfTheWindowButNotOfItsContentView) {
  server_.window().viewsNeedDisplay = true;
  server_.window().contentNeedsDisplay = true;
  redraw({{0, 0}, {10, 10}});
  EXPECT_FALSE(server_.window().viewsNeedDisplay);
  EXPECT_TRUE(server_.window().contentNeedsDisplay);
}

TEST(DocumentViewBrush, GrowsByTheStepOfTheRangeThatItEnters) {
  std::vector<double> sizes = {1};
  while (sizes.back() < 2500) sizes.push_back(steppedDiameter(sizes.back(), true));
  std::vector<double> expected;
  for (int size = 1; size < 10; ++size) expected.push_back(size);
  for (int size = 10; size < 100; size += 10) expected.push_back(size);
  for (int size = 100; size < 200; size += 25) expected.push_back(size);
  for (int size = 200; size < 300; size += 50) expected.push_back(size);
  for (int size = 300; size <= 2500; size += 100) expected.push_back(size);
  EXPECT_EQ(sizes, expected);
  EXPECT_EQ(steppedDiameter(2500, true), 2500);

  std::vector<double> down = {2500};
  while (down.back() > 1) down.push_back(steppedDiameter(down.back(), false));
  EXPECT_EQ(down, std::vector<double>(expected.rbegin(), expected.rend()));
  EXPECT_EQ(steppedDiameter(1, false), 1);
}

TEST(DocumentViewBrush, GoesToTheNextMultipleFromBetweenTwo) {
  EXPECT_EQ(steppedDiameter(13, true), 20);
  EXPECT_EQ(steppedDiameter(13, false), 10);
  EXPECT_EQ(steppedDiameter(9.5, true), 10);
  EXPECT_EQ(steppedDiameter(9.5, false), 9);
  EXPECT_EQ(steppedDiameter(110, true), 125);
  EXPECT_EQ(steppedDiameter(110, false), 100);
  EXPECT_EQ(steppedDiameter(299, true), 300);
  EXPECT_EQ(steppedDiameter(301, false), 300);
  EXPECT_EQ(steppedDiameter(0.2, false), 1);
  EXPECT_EQ(steppedDiameter(9000, false), 2500);
}

/// The host reacts, with its window at (100, 50), 800 by 600, on a screen of height 900: the upper
/// left corner of its content is at (100, 250), y growing downward.
class DocumentViewReaction : public testing::Test {
 protected:
  DocumentViewReaction() { view_.redrawDelay = 10; }

  void turn(std::vector<std::int32_t> wheels, CGEventFlags flags = 0, CGPoint place = {500, 550}) {
    SynthesizedEvent event;
    event.input = WheelEvent{0, std::move(wheels)};
    event.flags = flags;
    event.location = place;
    view_.react(event);
  }

  void press(std::uint32_t code, UInt32 kind = kEventRawKeyDown,
             OSType eventClass = kEventClassKeyboard) {
    const EventRef event = theEventManager().create(eventClass, kind, 0.0);
    theEventManager().setParameter(event, kEventParamKeyCode, typeUInt32,
                                   std::as_bytes(std::span(&code, 1)));
    view_.react(event);
    theEventManager().release(event);
  }

  double brushAfter(std::uint32_t key) {
    theHost().setBrush(50.0);
    press(key);
    return theHost().brush().value_or(0);
  }

  static constexpr CGEventFlags kOption = kCGEventFlagMaskAlternate;
  static constexpr CGEventFlags kCommand = kCGEventFlagMaskCommand;

  testing_support::Machine machine_;
  DocumentView& view_ = theDocumentView();
};

TEST_F(DocumentViewReaction, ZoomsByTenPercentWhateverTheAmountOfTheTick) {
  turn({1}, kOption);
  EXPECT_DOUBLE_EQ(view_.zoom, 1.1);
  turn({100}, kOption);
  EXPECT_DOUBLE_EQ(view_.zoom, 1.21);
  turn({-1}, kOption);
  turn({-7}, kOption);
  EXPECT_DOUBLE_EQ(view_.zoom, 1.0);
  turn({0}, kOption);
  EXPECT_DOUBLE_EQ(view_.zoom, 1.0);
}

TEST_F(DocumentViewReaction, ZoomsNoFurtherThanItsLimits) {
  for (int i = 0; i < 40; ++i) turn({1}, kOption);
  EXPECT_EQ(view_.zoom, 32.0);
  const CGPoint atTheTop = view_.origin;
  turn({1}, kOption);
  EXPECT_EQ(view_.origin.x, atTheTop.x);
  EXPECT_EQ(view_.origin.y, atTheTop.y);
  for (int i = 0; i < 90; ++i) turn({-1}, kOption);
  EXPECT_EQ(view_.zoom, 0.01);
}

TEST_F(DocumentViewReaction, ZoomsAroundThePointer) {
  const CGPoint places[] = {{100, 250}, {500, 550}, {900, 850}, {0, 0}, {1439, 899}};
  for (const CGPoint place : places) {
    view_.zoom = 2.0;
    view_.origin = {30, -20};
    const double x = place.x - 100;
    const double y = place.y - 250;
    // The point of the document under the pointer stays there.
    const double column = (x - view_.origin.x) / view_.zoom;
    const double row = (y - view_.origin.y) / view_.zoom;
    turn({1}, kOption, place);
    EXPECT_NEAR(view_.origin.x + column * view_.zoom, x, 1e-9) << place.x;
    EXPECT_NEAR(view_.origin.y + row * view_.zoom, y, 1e-9) << place.y;
    EXPECT_NEAR(view_.zoom, 2.2, 1e-12);
  }
}

TEST_F(DocumentViewReaction, ScrollsByThePixelsOfBothWheels) {
  turn({-8});
  EXPECT_EQ(view_.origin.x, 0);
  EXPECT_EQ(view_.origin.y, -8);
  turn({0, 5});
  EXPECT_EQ(view_.origin.x, 5);
  EXPECT_EQ(view_.origin.y, -8);
  turn({3}, kCommand);
  EXPECT_EQ(view_.origin.x, 8);
  EXPECT_EQ(view_.origin.y, -8);
  EXPECT_EQ(view_.zoom, 1.0);
}

TEST_F(DocumentViewReaction, ExchangesScrollingAndZoomingByThePreference) {
  view_.zoomWithScrollWheel = true;
  turn({1});
  EXPECT_DOUBLE_EQ(view_.zoom, 1.1);
  view_.zoom = 1.0;
  view_.origin = {0, 0};
  turn({8}, kOption);
  EXPECT_EQ(view_.origin.y, 8);
  turn({8}, kOption | kCommand);
  EXPECT_EQ(view_.origin.x, 8);
  EXPECT_EQ(view_.zoom, 1.0);
}

TEST_F(DocumentViewReaction, ChangesTheBrushByTheKeysOfTheLayout) {
  const std::tuple<const char*, std::uint32_t, std::uint32_t> layouts[] = {
      {"com.apple.keylayout.US", 33, 30},
      {"com.apple.keylayout.German", 41, 42},
      {"com.apple.keylayout.French", 30, 50},
      {"com.apple.keylayout.Spanish", 33, 30}};
  for (const auto& [layout, smaller, larger] : layouts) {
    keyboardLayout() = layout;
    EXPECT_EQ(brushAfter(smaller), 40) << layout;
    EXPECT_EQ(brushAfter(larger), 60) << layout;
    EXPECT_EQ(brushAfter(0), 50) << layout;
  }
}

TEST_F(DocumentViewReaction, IgnoresKeysThatAreReleasedAndOtherEvents) {
  theHost().setBrush(50.0);
  press(30, kEventRawKeyUp);
  press(30, kEventRawKeyDown, kEventClassMouse);
  EXPECT_EQ(theHost().brush(), 50.0);
  theHost().setBrush(std::nullopt);
  press(30);
  EXPECT_EQ(theHost().brush(), std::nullopt);
  EXPECT_TRUE(machine_.lines("view").empty());
  EXPECT_EQ(view_.redrawDue(), std::nullopt);
}

TEST_F(DocumentViewReaction, IgnoresKeysAtTheTap) {
  SynthesizedEvent event;
  event.input = KeyboardEvent{30, true};
  view_.react(event);
  EXPECT_TRUE(machine_.lines("view").empty());
}

TEST_F(DocumentViewReaction, DoesNotHappenWithoutARedrawDelay) {
  view_.redrawDelay.reset();
  turn({1}, kOption);
  turn({8});
  press(30);
  EXPECT_EQ(view_.zoom, 1.0);
  EXPECT_EQ(view_.origin.y, 0);
  EXPECT_EQ(theHost().brush(), 13.0);
  EXPECT_FALSE(theWindowServer().window().viewsNeedDisplay);
  EXPECT_TRUE(machine_.lines("view").empty());
}

TEST_F(DocumentViewReaction, IsRedrawnTheDelayAfterTheFirstChange) {
  theLog().setNow(100);
  turn({8});
  EXPECT_EQ(view_.redrawDue(), 110.0);
  EXPECT_TRUE(theWindowServer().window().viewsNeedDisplay);
  theLog().setNow(105);
  turn({8});
  EXPECT_EQ(view_.redrawDue(), 110.0);
  view_.redraw();
  EXPECT_EQ(view_.redrawDue(), std::nullopt);
  EXPECT_FALSE(theWindowServer().window().viewsNeedDisplay);
  turn({8});
  EXPECT_EQ(view_.redrawDue(), 115.0);
}

TEST_F(DocumentViewReaction, DropsTheRedrawOfAWindowThatIsClosed) {
  turn({8});
  view_.close();
  EXPECT_EQ(view_.redrawDue(), std::nullopt);
  turn({8});
  EXPECT_EQ(view_.redrawDue(), std::nullopt);
  EXPECT_EQ(view_.origin.y, 16);
}

TEST_F(DocumentViewReaction, IsLoggedWithZoomPlaceAndBrush) {
  turn({-8});
  theHost().setBrush(std::nullopt);
  turn({0, 3});
  const auto lines = machine_.lines("view");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].dump(),
            R"({"t":0,"what":"view","zoom":1.0,"origin":[0.0,-8.0],"brush":13.0})");
  EXPECT_EQ(lines[1].dump(),
            R"({"t":0,"what":"view","zoom":1.0,"origin":[3.0,-8.0],"brush":null})");
}

}  // namespace
