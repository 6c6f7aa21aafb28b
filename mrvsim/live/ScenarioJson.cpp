#include "mrvsim/live/ScenarioJson.h"

#include <MoravinClient/MoravinClient.h>

#include <filesystem>

#include "simulator/base/Log.h"

namespace simulator::live {

namespace {

template <class Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json rectJson(const CGRect& rect) {
  return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

Json pointJson(CGPoint point) { return {point.x, point.y}; }

Json windowJson(const MainWindow& window) {
  if (!window) return nullptr;
  return {{"frame", rectJson(window->frame)}, {"content", rectJson(window->content)}};
}

Json versionJson(const HostVersion& version) {
  return version ? Json({version->first, version->second}) : Json(nullptr);
}

Json hostJson(const HostSetup& host) {
  Json json = {{"version", versionJson(host.version)},
               {"tool", host.tool},
               {"brush", orNull(host.brush)},
               {"zoomWithScrollWheel", orNull(host.zoomWithScrollWheel)},
               {"window", windowJson(host.window)},
               {"screenHeight", host.screenHeight},
               {"redrawDelay", orNull(host.redrawDelay)}};
  for (const std::string& file : host.actions) {
    json["actions"].push_back(std::filesystem::absolute(file).string());
  }
  return json;
}

/// The name and the value of what a step does.
using Member = std::pair<const char*, Json>;

/// A sample is written as such, every other message with all of its fields.
Member memberOf(const MessageStep& step) {
  const DeviceMessage& message = step.message;
  const bool isSample = message.type == kMoravinMessageDeviceState && !message.client &&
                        message.command == kMoravinCommandAxes && message.value == 0 &&
                        message.button == 0;
  if (isSample) return {"axes", message.axes};
  Json json = {{"type", idText(message.type)},
               {"command", message.command},
               {"value", message.value},
               {"axes", message.axes},
               {"button", message.button}};
  if (message.client) json["client"] = *message.client;
  return {"message", json};
}

Member memberOf(const RefreshStep& step) {
  Json rects = Json::array();
  for (const CGRect& rect : step.rects) rects.push_back(rectJson(rect));
  return {"refresh", rects};
}

Member memberOf(const ClickStep& step) {
  switch (step.click) {
    case Click::kDown:
      return {"click", "down"};
    case Click::kUp:
      return {"click", "up"};
    case Click::kMoved:
      return {"click", "moved"};
    default:
      return {"click", "dragged"};
  }
}

Member memberOf(const FailStep& step) {
  return {"fail",
          {{"procedure", step.rule.procedure},
           {"error", step.rule.error},
           {"after", step.rule.after},
           {"times", step.rule.times}}};
}

Member memberOf(const CallStep& step) { return {"call", {step.caller, step.selector}}; }
Member memberOf(const ActiveStep& step) { return {"active", step.active}; }
Member memberOf(const WindowPendingStep& step) { return {"windowPending", step.pending}; }
Member memberOf(const ToolbarPendingStep& step) { return {"toolbarPending", step.pending}; }
Member memberOf(const MouseStep& step) { return {"mouse", pointJson(step.place)}; }
Member memberOf(const ModifiersStep& step) { return {"modifiers", step.modifiers}; }
Member memberOf(const ToolStep& step) { return {"tool", step.tool}; }
Member memberOf(const BrushStep& step) { return {"brush", orNull(step.diameter)}; }
Member memberOf(const WindowStep& step) { return {"window", windowJson(step.window)}; }
Member memberOf(const CloseWindowStep&) { return {"closeWindow", true}; }
Member memberOf(const LayoutStep& step) { return {"layout", step.layout}; }
Member memberOf(const RedrawDelayStep& step) { return {"redrawDelay", orNull(step.milliseconds)}; }
Member memberOf(const PreferenceStep& step) {
  return {"zoomWithScrollWheel", step.zoomWithScrollWheel};
}

}  // namespace

Json setupJson(const Scenario& scenario) {
  return {{"host", hostJson(scenario.host)},
          {"layout", scenario.layout},
          {"mouse", pointJson(scenario.mouse)},
          {"modifiers", scenario.modifiers},
          {"framework", scenario.framework}};
}

Json stepJson(const Step& step) {
  Member member = std::visit([](const auto& action) { return memberOf(action); }, step.action);
  return {{"at", step.at}, {member.first, std::move(member.second)}};
}

std::string kindOf(const Json& step) { return std::next(step.begin()).key(); }

}  // namespace simulator::live
