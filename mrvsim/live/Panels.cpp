// The bar at the top, and the panels of the host, of faults and devices, and of the log.
#include <SPInterf.h>
#include <fmt/format.h>

#include <algorithm>

#include "mrvsim/live/Stage.h"
#include "simulator/scenario/Names.h"
#include "simulator/scenario/Procedures.h"

namespace simulator::live {

namespace {

std::size_t indexOf(const std::vector<std::string>& names, const std::string& name) {
  const auto found = std::find(names.begin(), names.end(), name);
  return found == names.end() ? 0 : static_cast<std::size_t>(found - names.begin());
}

/// The names, and first the present one if it is another.
std::vector<std::string> withPresent(std::vector<std::string> names, const std::string& present) {
  if (std::find(names.begin(), names.end(), present) == names.end()) {
    names.insert(names.begin(), present);
  }
  return names;
}

void drawState(const Stage& stage) {
  const Seen& seen = stage.driver.seen();
  const bool isConnected = seen.host.isConnected;
  const Colour colour = !seen.isLoaded ? kAlarmColour : isConnected ? kPanColour : kBrushColour;
  const char* const text = !seen.isLoaded                   ? "not loaded"
                           : isConnected                    ? "connected to the device"
                           : stage.driver.setup().framework ? "loaded, not connected"
                                                            : "loaded, no framework";
  const ImVec2 from = ImGui::GetCursorScreenPos();
  ImGui::GetWindowDrawList()->AddCircleFilled({from.x + 6, from.y + ImGui::GetFrameHeight() / 2}, 5,
                                              colour);
  ImGui::Dummy({14, 1});
  ImGui::SameLine();
  ImGui::AlignTextToFramePadding();
  ImGui::TextUnformatted(text);
}

void drawFigures(const Stage& stage) {
  const Latency& latency = stage.driver.seen().latency;
  const std::string delay = latency.count() == 0
                                ? "input to event: \xE2\x80\x93"
                                : fmt::format("input to event: median {:.2f} ms, 99 % {:.2f} ms",
                                              latency.percentile(0.5), latency.percentile(0.99));
  const std::string text = fmt::format("{}     {:.0f} pictures/s, {:.1f} ms each", delay,
                                       stage.framesPerSecond, stage.frameTime);
  const float width = ImGui::CalcTextSize(text.c_str()).x;
  ImGui::SameLine(ImGui::GetWindowWidth() - width - ImGui::GetStyle().WindowPadding.x);
  ImGui::AlignTextToFramePadding();
  Widgets::faint(text.c_str());
}

/// Which window the host has: where and how large.
void drawWindowSliders(const Stage& stage) {
  constexpr float kTitleHeight = 22;
  Widgets widgets = stage.widgets;
  widgets.nameWidth = 58;
  const HostSetup& host = stage.driver.setup().host;
  const WindowSetup present = host.window.value_or(*liveSetup().host.window);
  bool hasWindow = host.window.has_value();
  bool changed = widgets.checkbox("Window", hasWindow);
  const CGRect& content = present.content;
  auto x = static_cast<float>(content.origin.x);
  auto y = static_cast<float>(content.origin.y);
  auto width = static_cast<float>(content.size.width);
  auto height = static_cast<float>(content.size.height);
  const auto screenHeight = static_cast<float>(std::max(host.screenHeight, 1.0));
  changed = widgets.slider("Left", x, 0, screenHeight * 1.6F, "%.0f") || changed;
  changed = widgets.slider("Bottom", y, 0, screenHeight, "%.0f") || changed;
  changed = widgets.slider("Width", width, 50, screenHeight * 1.6F, "%.0f") || changed;
  changed = widgets.slider("Height", height, 50, screenHeight, "%.0f") || changed;
  if (!changed) return;
  const auto whole = [](float value) { return static_cast<double>(static_cast<int>(value)); };
  WindowSetup window;
  window.content = {{whole(x), whole(y)}, {whole(width), whole(height)}};
  window.frame = {{whole(x), whole(y)}, {whole(width), whole(height) + kTitleHeight}};
  stage.driver.take(WindowStep{hasWindow ? MainWindow(window) : std::nullopt});
}

void drawDelay(const Stage& stage) {
  const std::optional<double> delay = stage.driver.setup().host.redrawDelay;
  bool reacts = delay.has_value();
  auto milliseconds = static_cast<float>(delay.value_or(16));
  bool changed = stage.widgets.slider("Redraw after", milliseconds, 0, 400, "%.0f ms");
  if (changed) reacts = true;
  changed = stage.widgets.checkbox("Reacts to ticks", reacts) || changed;
  if (!changed) return;
  const double whole = static_cast<int>(milliseconds);
  stage.driver.take(RedrawDelayStep{reacts ? std::optional(whole) : std::nullopt});
}

void drawChoices(const Stage& stage) {
  const Scenario& setup = stage.driver.setup();
  const auto tools = withPresent(knownTools(), setup.host.tool);
  std::size_t tool = indexOf(tools, setup.host.tool);
  if (stage.widgets.choice("Tool", tool, tools)) stage.driver.take(ToolStep{tools[tool]});
  const auto layouts = withPresent(knownLayouts(), setup.layout);
  std::size_t layout = indexOf(layouts, setup.layout);
  if (stage.widgets.choice("Layout", layout, layouts)) {
    stage.driver.take(LayoutStep{layouts[layout]});
  }
}

void drawSwitches(const Stage& stage) {
  const Scenario& setup = stage.driver.setup();
  bool zooms = setup.host.zoomWithScrollWheel.value_or(false);
  if (stage.widgets.checkbox("Wheel zooms", zooms)) stage.driver.take(PreferenceStep{zooms});
  ImGui::SameLine();
  bool framework = setup.framework;
  if (stage.widgets.checkbox("Framework", framework)) stage.driver.setFramework(framework);
}

}  // namespace

void beginPart(const char* name, const Area& area, ImGuiWindowFlags flags) {
  ImGui::SetNextWindowPos({area.x, area.y});
  ImGui::SetNextWindowSize({area.width, area.height});
  ImGui::Begin(name, nullptr,
               ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                   ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoNav |
                   ImGuiWindowFlags_NoBringToFrontOnFocus | flags);
}

void drawTopBar(const Stage& stage, const Area& area) {
  beginPart("top", area);
  Driver& driver = stage.driver;
  const auto call = [&](const char* selector) {
    driver.take(CallStep{kSPInterfaceCaller, selector});
  };
  if (stage.widgets.button("Startup")) call(kSPInterfaceStartupSelector);
  ImGui::SameLine();
  if (stage.widgets.button("Shutdown")) call(kSPInterfaceShutdownSelector);
  ImGui::SameLine();
  if (stage.widgets.button("Load anew")) driver.restart();
  ImGui::SameLine(0, 24);
  bool active = driver.isActive();
  if (stage.widgets.checkbox("Host in front", active)) driver.take(ActiveStep{active});
  ImGui::SameLine(0, 16);
  bool pluggedIn = driver.isPluggedIn();
  if (stage.widgets.checkbox("Device plugged in", pluggedIn)) driver.plugIn(pluggedIn);
  ImGui::SameLine(0, 24);
  drawState(stage);
  drawFigures(stage);
  ImGui::End();
}

void drawHost(const Stage& stage, const Area& area) {
  beginPart("host", area);
  stage.widgets.title("The host");
  constexpr float kColumnGap = 28;
  const float width = (ImGui::GetContentRegionAvail().x - kColumnGap) * 0.55F;
  ImGui::BeginChild("behaviour", {width, 0});
  drawDelay(stage);
  drawChoices(stage);
  drawSwitches(stage);
  ImGui::EndChild();
  ImGui::SameLine(0, kColumnGap);
  ImGui::BeginChild("place");
  drawWindowSliders(stage);
  ImGui::EndChild();
  ImGui::End();
}

Extras::Extras(std::filesystem::path mapsFile)
    : mapsFile_(std::move(mapsFile)), procedures_(procedureNames()) {
  procedure_ = indexOf(procedures_, "ActionControl.Get");
}

void Extras::draw(const Stage& stage, const Area& area) {
  beginPart("extras", area);
  if (ImGui::BeginTabBar("extras")) {
    if (ImGui::BeginTabItem("Faults")) {
      drawFaults(stage);
      ImGui::EndTabItem();
    }
    stage.widgets.notePlace("Faults", ImGui::GetItemRectMin(), ImGui::GetItemRectMax());
    if (ImGui::BeginTabItem("Devices")) {
      drawDevices(stage);
      ImGui::EndTabItem();
    }
    stage.widgets.notePlace("Devices", ImGui::GetItemRectMin(), ImGui::GetItemRectMax());
    ImGui::EndTabBar();
  }
  ImGui::End();
}

void Extras::drawFaults(const Stage& stage) {
  Widgets widgets = stage.widgets;
  widgets.nameWidth = 84;
  widgets.choice("Procedure", procedure_, procedures_);
  widgets.number("fails with", error_);
  widgets.number("after calls", after_);
  widgets.number("so often", times_);
  after_ = std::max(after_, 0);
  times_ = std::max(times_, 0);
  if (!widgets.button("Inject", {-1, 0})) return;
  FaultRule rule;
  rule.procedure = procedures_[procedure_];
  rule.error = error_;
  rule.after = static_cast<std::uint64_t>(after_);
  rule.times = static_cast<std::uint64_t>(times_);
  stage.driver.take(FailStep{rule});
}

void Extras::drawDevices(const Stage& stage) {
  auto strength = static_cast<float>(stage.driver.fullDeflection);
  if (stage.widgets.slider("Full push", strength, 20, 500, "%.0f counts")) {
    stage.driver.fullDeflection = static_cast<int>(strength);
  }
  ImGui::BeginChild("devices");
  const auto& joysticks = stage.devices.joysticks();
  if (joysticks.empty()) {
    Widgets::faint("No joystick, gamepad or 3D mouse is connected.");
    Widgets::faint("Arrow keys slide, W and S push and pull,");
    Widgets::faint("A and D twist, R F Q E tilt.");
  }
  for (std::size_t i = 0; i < joysticks.size(); ++i) drawMap(stage, i);
  if (!problem_.empty()) ImGui::TextWrapped("%s", problem_.c_str());
  ImGui::EndChild();
}

void Extras::drawMap(const Stage& stage, std::size_t index) {
  static constexpr const char* kNames[kAxes] = {"Sideways",  "Push",  "Up",
                                                "Tilt back", "Twist", "Tilt aside"};
  const Joystick joystick = stage.devices.joysticks()[index];
  AxisMap map = joystick.map;
  ImGui::PushID(static_cast<int>(index));
  stage.widgets.title(joystick.name.c_str());
  std::vector<std::string> choices = {"none"};
  for (std::size_t axis = 0; axis < joystick.axes; ++axis) {
    choices.push_back(fmt::format("axis {}", axis + 1));
    choices.push_back(fmt::format("axis {}, inverted", axis + 1));
  }
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    AxisSource& source = map.sources[axis];
    auto choice = static_cast<std::size_t>(source.axis * 2 + (source.isInverted ? 2 : 1));
    if (source.axis < 0 || choice >= choices.size()) choice = 0;
    if (!stage.widgets.choice(kNames[axis], choice, choices)) continue;
    source = choice == 0 ? AxisSource{}
                         : AxisSource{static_cast<int>((choice - 1) / 2), choice % 2 == 0};
  }
  auto deadZone = static_cast<float>(map.deadZone);
  if (stage.widgets.slider("Dead zone", deadZone, 0, 0.5F, "%.2f")) map.deadZone = deadZone;
  ImGui::PopID();
  if (map == joystick.map) return;
  stage.devices.setMap(index, map);
  save(stage.devices);
}

void Extras::save(const Devices& devices) {
  if (mapsFile_.empty()) return;
  try {
    devices.maps().save(mapsFile_);
    problem_.clear();
  } catch (const std::exception& error) {
    problem_ = error.what();
  }
}

void drawLog(const Stage& stage, const Area& area) {
  beginPart("log", area);
  stage.widgets.title("What the plug-in does");
  ImGui::BeginChild("lines");
  ImGui::PushFont(stage.fixed);
  ImGui::PushStyleVar(ImGuiStyleVar_ItemSpacing, {0, 2});
  for (const std::string& line : stage.driver.seen().lines) {
    const bool isMisuse = line.find("misuse") != std::string::npos;
    ImGui::PushStyleColor(ImGuiCol_Text, isMisuse ? kAlarmColour.shade() : kFaint.shade());
    ImGui::TextUnformatted(line.c_str());
    ImGui::PopStyleColor();
  }
  ImGui::PopStyleVar();
  ImGui::PopFont();
  ImGui::SetScrollHereY(1);
  ImGui::EndChild();
  ImGui::End();
}

bool drawBreakdown(const Stage& stage, const Area& area) {
  const Seen& seen = stage.driver.seen();
  ImGui::PushStyleColor(ImGuiCol_WindowBg, Colour{96, 34, 34}.shade());
  ImGui::SetNextWindowPos({area.x, area.y});
  ImGui::SetNextWindowSize({area.width, 0});
  ImGui::Begin("breakdown", nullptr,
               ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                   ImGuiWindowFlags_NoSavedSettings | ImGuiWindowFlags_NoNav);
  ImGui::PushTextWrapPos(area.width - 180);
  ImGui::TextUnformatted(seen.lastBreakdown.c_str());
  ImGui::PopTextWrapPos();
  const bool runs = seen.isLoaded;
  Widgets::faint(runs ? "It was loaded anew and goes on." : "It breaks at once each time.");
  ImGui::SameLine(area.width - 120);
  const bool used = stage.widgets.button(runs ? "Understood" : "Try again", {104, 0});
  if (used && !runs) stage.driver.restart();
  ImGui::End();
  ImGui::PopStyleColor();
  return used;
}

}  // namespace simulator::live
