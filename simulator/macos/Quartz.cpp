// Quartz's public C functions.
#include <ApplicationServices/ApplicationServices.h>

#include <cstdarg>

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

CGEventRef simulator::createScrollWheelEvent(CGScrollEventUnit units,
                                             std::vector<std::int32_t> wheels) {
  if (failureOf(MacCall::kCGEventCreateScrollWheelEvent)) return nullptr;
  SynthesizedEvent event;
  event.input = WheelEvent{units, std::move(wheels)};
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

CGEventRef CGEventCreateScrollWheelEvent(CGEventSourceRef, CGScrollEventUnit units,
                                         std::uint32_t wheelCount, std::int32_t wheel1, ...) {
  std::vector<std::int32_t> wheels = {wheel1};
  std::va_list others;
  va_start(others, wheel1);
  for (std::uint32_t i = 1; i < wheelCount; ++i) wheels.push_back(va_arg(others, int));
  va_end(others);
  return createScrollWheelEvent(units, std::move(wheels));
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
