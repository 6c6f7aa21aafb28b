// Quartz's public C functions.
#include <ApplicationServices/ApplicationServices.h>

#include "simulator/base/Log.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/MacFaults.h"
#include "simulator/macos/ThreadRules.h"
#include "simulator/macos/VariadicCalls.h"
#include "simulator/macos/WindowServer.h"

using namespace simulator;

namespace {

CGEventRef makeEvent(SynthesizedEvent event) {
  return static_cast<CGEventRef>(const_cast<void*>(theCFObjects().make(std::move(event))));
}

template <class Change>
void changeEvent(CGEventRef event, const char* procedure, Change change) {
  theCFObjects().change<SynthesizedEvent>(event, procedure, change);
}

}  // namespace

CGEventRef simulator::createScrollWheelEvent(CGScrollEventUnit units, const std::int32_t* wheels,
                                             std::uint32_t count) {
  if (failureOf(MacCall::kCGEventCreateScrollWheelEvent)) return nullptr;
  SynthesizedEvent event;
  event.input = WheelEvent{units, {wheels, wheels + count}};
  event.type = kCGEventScrollWheel;
  event.location = theWindowServer().mouse;
  return makeEvent(std::move(event));
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode virtualKey, bool keyDown) {
  if (failureOf(MacCall::kCGEventCreateKeyboardEvent)) return nullptr;
  SynthesizedEvent event;
  event.input = KeyboardEvent{virtualKey, keyDown};
  event.type = keyDown ? kCGEventKeyDown : kCGEventKeyUp;
  return makeEvent(std::move(event));
}

void CGEventSetType(CGEventRef event, CGEventType type) {
  changeEvent(event, "CGEventSetType", [&](SynthesizedEvent& e) { e.type = type; });
}

void CGEventSetFlags(CGEventRef event, CGEventFlags flags) {
  changeEvent(event, "CGEventSetFlags", [&](SynthesizedEvent& e) { e.flags = flags; });
}

void CGEventSetLocation(CGEventRef event, CGPoint location) {
  changeEvent(event, "CGEventSetLocation", [&](SynthesizedEvent& e) { e.location = location; });
}

void CGEventPost(CGEventTapLocation tap, CGEventRef event) {
  const auto posted = theCFObjects().get<SynthesizedEvent>(event, "CGEventPost");
  if (posted) theWindowServer().post(tap, *posted);
}

CGError CGSetLocalEventsSuppressionInterval(CFTimeInterval seconds) {
  if (const auto error = failureOf(MacCall::kCGSetLocalEventsSuppressionInterval)) return *error;
  theLog().write("suppression", {{"seconds", seconds}});
  return 0;
}

CGError CGRegisterScreenRefreshCallback(CGScreenRefreshCallback callback, void* userInfo) {
  requireMainThread("CGRegisterScreenRefreshCallback");
  if (const auto error = failureOf(MacCall::kCGRegisterScreenRefreshCallback)) return *error;
  theWindowServer().registerRefresh(callback, userInfo);
  return 0;
}

void CGUnregisterScreenRefreshCallback(CGScreenRefreshCallback callback, void* userInfo) {
  requireMainThread("CGUnregisterScreenRefreshCallback");
  theWindowServer().unregisterRefresh(callback, userInfo);
}
