#include "hostwindow/HostWindow.h"
#include "platform/FourCharCode.h"
#include "simulator/base/Faults.h"
#include "tests/support/Input.h"
#include "tests/support/LowerHandler.h"

namespace {

using namespace testing_support;
using simulator::theEventManager;

constexpr EventParamName kMarker = fourCharCode("MrVe");

class ClickFilter : public NavigatorFixture {
 protected:
  /// Dispatches a mouse event, with the marker unless it is empty, and returns whether it reached
  /// the host.
  bool passes(UInt32 kind, const std::vector<std::byte>& marker = {},
              EventParamType type = typeChar) {
    const EventRef event = theEventManager().create(kEventClassMouse, kind, 0.0);
    if (!marker.empty()) theEventManager().setParameter(event, kMarker, type, marker);
    const simulator::Dispatched dispatched = theEventManager().dispatch(event);
    theEventManager().release(event);
    EXPECT_EQ(dispatched.status, dispatched.reachedHost ? int{eventNotHandledErr} : int{noErr});
    return dispatched.reachedHost;
  }

  bool clicksPass() { return passes(kEventMouseDown) && passes(kEventMouseUp); }
};

TEST_F(ClickFilter, PassesClicksWhileNothingPans) { EXPECT_TRUE(clicksPass()); }

TEST_F(ClickFilter, SwallowsRealClicksFromTheFirstPanSampleToRest) {
  navigator->PanEvent(1, 0);
  EXPECT_FALSE(passes(kEventMouseDown));
  EXPECT_FALSE(passes(kEventMouseUp));
  navigator->PanEvent(0, -1);
  EXPECT_FALSE(passes(kEventMouseDown));
  navigator->PanEvent(0, 0);
  EXPECT_TRUE(clicksPass());
}

TEST_F(ClickFilter, PassesOtherMouseEventsWhileInstalled) {
  navigator->InstallMouseDownHandler();
  for (const UInt32 kind : {0U, 5U, 6U, 8U, 10U}) EXPECT_TRUE(passes(kind)) << kind;
}

/// The plug-in installs the filter only for clicks, so the test installs it for other kinds itself.
TEST_F(ClickFilter, PassesOtherKindsOnIfGivenThem) {
  const std::vector<EventTypeSpec> types = {{kEventClassMouse, 5}, {kEventClassMouse, 6}};
  theEventManager().install(GetEventDispatcherTarget(), mouseDownHandler, types, nullptr, nullptr);
  EXPECT_TRUE(passes(5));
  EXPECT_TRUE(passes(6));
}

TEST_F(ClickFilter, PassesAClickMarkedWithOne) {
  navigator->InstallMouseDownHandler();
  EXPECT_TRUE(passes(kEventMouseDown, {std::byte{1}}));
  EXPECT_TRUE(passes(kEventMouseUp, {std::byte{1}}));
}

TEST_F(ClickFilter, SwallowsAClickWithAnyOtherMark) {
  navigator->InstallMouseDownHandler();
  for (const int mark : {0, 2, 0x7F, 0x80, 0xFF}) {
    EXPECT_FALSE(passes(kEventMouseDown, {static_cast<std::byte>(mark)})) << mark;
  }
}

TEST_F(ClickFilter, SwallowsAClickWithAMarkOfAnotherType) {
  navigator->InstallMouseDownHandler();
  EXPECT_FALSE(passes(kEventMouseDown, {std::byte{1}}, fourCharCode("bool")));
}

TEST_F(ClickFilter, ReadsTheFirstByteOfALongerMark) {
  navigator->InstallMouseDownHandler();
  EXPECT_TRUE(passes(kEventMouseDown, {std::byte{1}, std::byte{0}}));
  EXPECT_FALSE(passes(kEventMouseDown, {std::byte{0}, std::byte{1}}));
}

const std::vector<EventTypeSpec> kClicks = {{kEventClassMouse, kEventMouseDown},
                                            {kEventClassMouse, kEventMouseUp}};

TEST_F(ClickFilter, KeepsTheClicksThatItSwallowsFromTheHandlersBelow) {
  LowerHandler lower(kClicks);
  EXPECT_TRUE(lower.receives(kEventClassMouse, kEventMouseDown));
  navigator->InstallMouseDownHandler();
  EXPECT_FALSE(lower.receives(kEventClassMouse, kEventMouseDown));
  EXPECT_FALSE(lower.receives(kEventClassMouse, kEventMouseUp));
  navigator->RemoveMouseDownHandler();
  EXPECT_TRUE(lower.receives(kEventClassMouse, kEventMouseUp));
}

TEST_F(ClickFilter, PassesMarkedClicksToTheHandlersBelowAndReturnsTheirStatus) {
  LowerHandler lower(kClicks);
  navigator->InstallMouseDownHandler();
  for (const EventTypeSpec& type : kClicks) {
    const EventRef event = theEventManager().create(type.eventClass, type.eventKind, 0.0);
    const char mark = 1;
    SetEventParameter(event, kMarker, typeChar, sizeof mark, &mark);
    EXPECT_TRUE(lower.receives(event));
  }
}

/// Also installs the filter for a kind for which the plug-in does not install it.
TEST_F(ClickFilter, PassesOtherKindsToTheHandlersBelowAndReturnsTheirStatus) {
  const std::vector<EventTypeSpec> moved = {{kEventClassMouse, kEventMouseMoved}};
  LowerHandler lower(moved);
  theEventManager().install(GetEventDispatcherTarget(), mouseDownHandler, moved, nullptr, nullptr);
  EXPECT_TRUE(lower.receives(kEventClassMouse, kEventMouseMoved));
}

TEST_F(ClickFilter, IsInstalledAtMostOnce) {
  navigator->InstallMouseDownHandler();
  const EventHandlerRef filter = navigator->m_mouseDownHandlerRef;
  navigator->InstallMouseDownHandler();
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, filter);
  const simulator::Json types = eventTypes({{"mous", 1}, {"mous", 2}});
  const simulator::Json line = {{"t", 0}, {"what", "handler"}, {"do", "install"}, {"types", types}};
  EXPECT_EQ(machine.drain(), Lines{line});
}

TEST_F(ClickFilter, IsRemovedAtMostOnce) {
  navigator->InstallMouseDownHandler();
  navigator->RemoveMouseDownHandler();
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
  machine.drain();
  navigator->RemoveMouseDownHandler();
  EXPECT_TRUE(machine.drain().empty());
  EXPECT_TRUE(clicksPass());
}

TEST_F(ClickFilter, PassesClicksAtRestIfThePlatformRefusesToRemoveIt) {
  navigator->PanEvent(1, 0);
  simulator::theFaults().add({"Mac.RemoveEventHandler", -1, 0, 1});
  navigator->PanEvent(0, 0);
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
  EXPECT_TRUE(passes(kEventMouseDown));
  navigator->PanEvent(1, 0);
  EXPECT_FALSE(passes(kEventMouseDown));
  navigator->PanEvent(0, 0);
  EXPECT_TRUE(passes(kEventMouseDown));
}

TEST_F(ClickFilter, IsInstalledByTheNextSampleIfAnInstallationIsRefused) {
  simulator::theFaults().add({"Mac.InstallEventHandler", -1, 0, 1});
  navigator->PanEvent(1, 0);
  EXPECT_EQ(navigator->m_mouseDownHandlerRef, nullptr);
  navigator->PanEvent(1, 0);
  EXPECT_FALSE(passes(kEventMouseDown));
}

}  // namespace
