#include "simulator/scenario/Player.h"

#include <MoravinClient/MoravinClient.h>
#include <PIActionsPlugIn.h>
#include <fmt/format.h>

#include <algorithm>

#include "simulator/base/Log.h"
#include "simulator/host/DocumentView.h"
#include "simulator/host/Host.h"
#include "simulator/host/actions/ActionFileHost.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/EventManager.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/RunLoops.h"
#include "simulator/macos/TextInput.h"
#include "simulator/macos/WindowServer.h"
#include "simulator/moravin/Framework.h"

namespace simulator {

namespace {

constexpr std::uint64_t kNanosecondsInMillisecond = 1000000;

void setMainWindow(const MainWindow& window) {
  WindowServer& server = theWindowServer();
  if (!window) {
    server.window().isMain = false;
    return;
  }
  if (!server.window().isOpen) server.openWindow();
  WindowState& state = server.window();
  state.isMain = true;
  state.frame = window->frame;
  state.content = window->content;
}

MoravinDeviceState recordOf(const DeviceMessage& message, std::int64_t at) {
  MoravinDeviceState state = {};
  state.client = message.client.value_or(theFramework().client());
  state.command = message.command;
  state.value = message.value;
  state.time = static_cast<std::uint64_t>(at) * kNanosecondsInMillisecond;
  std::copy(message.axes.begin(), message.axes.end(), state.axis);
  state.button = message.button;
  return state;
}

/// Sends an event directly to the dispatcher, as the system sends its own.
Dispatched send(OSType eventClass, UInt32 kind) {
  EventManager& events = theEventManager();
  const EventRef event = events.create(eventClass, kind, 0.0);
  const Dispatched dispatched = events.dispatch(event);
  events.release(event);
  return dispatched;
}

bool overlap(const CGRect& a, const CGRect& b) {
  return a.origin.x < b.origin.x + b.size.width && b.origin.x < a.origin.x + a.size.width &&
         a.origin.y < b.origin.y + b.size.height && b.origin.y < a.origin.y + a.size.height;
}

bool isMotion(const DeviceMessage& message) {
  return message.type == kMoravinMessageDeviceState && message.command == kMoravinCommandAxes &&
         std::any_of(message.axes.begin(), message.axes.end(), [](auto axis) { return axis != 0; });
}

/// What keeps a message from the plug-in; null if nothing does.
const char* obstacleTo(const DeviceMessage& message, bool framework) {
  if (!framework) return "the device framework is absent";
  if (!theFramework().isInstalled()) {
    return "it had no message handler installed, which the call [\"SP Interface\", \"Startup\"] "
           "is for";
  }
  const bool forOther = message.client && *message.client != theFramework().client();
  return forOther ? "all of it was for another client" : nullptr;
}

const char* nameOf(Click click) {
  switch (click) {
    case Click::kDown:
      return "down";
    case Click::kUp:
      return "up";
    case Click::kMoved:
      return "moved";
    default:
      return "dragged";
  }
}

}  // namespace

void runMainLoopUntilIdle() {
  do {
    theWindowServer().deliverInput();
    theThreads().waitUntilIdle();
  } while (theEventManager().dispatchNext());
  theWindowServer().deliverInput();
}

void reportAllLeaks() {
  theHost().reportLeaks();
  theEventManager().reportLeaks();
  theCFObjects().reportLeaks();
  theWindowServer().reportLeaks();
}

Player::Player(const Scenario& scenario, const TemporaryHome& home, PlayerObserver* observer)
    : scenario_(scenario), home_(home), observer_(observer) {
  setUp();
}

void Player::setUp() {
  const HostSetup& setup = scenario_.host;
  writeHostFiles(setup, preferencesFolder(home_.path()));
  setHomeFolder(home_.path());
  theHost().setVersion(setup.version);
  theHost().setTool(setup.tool);
  theHost().setBrush(setup.brush);
  if (!setup.actions.empty()) {
    loadActionFiles(setup.actions, theHost().model(), theHost().typeIds());
  }
  keyboardLayout() = scenario_.layout;
  setKeyModifiers(scenario_.modifiers);
  WindowServer& server = theWindowServer();
  setMainWindow(setup.window);
  server.screen.size.height = setup.screenHeight;
  server.mouse = scenario_.mouse;
  DocumentView& view = theDocumentView();
  view.redrawDelay = setup.redrawDelay;
  view.zoomWithScrollWheel = setup.zoomWithScrollWheel.value_or(false);
  view.reported = [this](const std::vector<CGRect>& rects) { report(rects); };
  server.setApplication([](const SynthesizedEvent& event) { theDocumentView().react(event); });
  theEventManager().setApplication([](EventRef event) { theDocumentView().react(event); });
}

void Player::play(const std::string& plugin, const std::string& framework) {
  load(plugin, framework);
  for (const Step& step : scenario_.steps) take(step);
  unload();
}

void Player::load(const std::string& plugin, const std::string& framework) {
  if (scenario_.framework) loadFramework(framework);
  plugin_ = loadPlugin(plugin);
}

void Player::unload() {
  plugin_.reset();
  reportAllLeaks();
}

void Player::take(const Step& step) {
  if (observer_ != nullptr) observer_->step();
  advanceTo(step.at);
  at_ = step.at;
  // A thread created during the step starts after the main thread has finished the step.
  theThreads().holdNewTasks(true);
  std::visit([this](const auto& action) { act(action); }, step.action);
  theThreads().holdNewTasks(false);
  settle();
}

void Player::advanceTo(std::int64_t at) {
  DocumentView& view = theDocumentView();
  while (view.redrawDue() && *view.redrawDue() <= static_cast<double>(at)) {
    theLog().setNow(static_cast<std::int64_t>(*view.redrawDue()));
    view.redraw();
    settle();
  }
  theLog().setNow(at);
}

void Player::report(const std::vector<CGRect>& rects) {
  const WindowState& window = theWindowServer().window();
  if (observer_ == nullptr || !window.isMain) return;
  const auto meetsContent = [&](const CGRect& rect) { return overlap(rect, window.content); };
  if (std::any_of(rects.begin(), rects.end(), meetsContent)) observer_->redrawn();
}

void Player::settle() { runMainLoopUntilIdle(); }

void Player::act(const CallStep& step) {
  PSActionsPlugInMessage message = {};
  auto* data = reinterpret_cast<SPMessageData*>(&message);
  data->self = theHost().plugIn();
  data->basic = theHost().basicSuite();
  const int result = plugin_->entry()(step.caller.c_str(), step.selector.c_str(), &message);
  theLog().write("result", {{"value", static_cast<std::uint32_t>(result)}});
}

void Player::act(const MessageStep& step) {
  count(step.message);
  if (!scenario_.framework) return;
  if (observer_ != nullptr) {
    observer_->message(step.message, active_, theWindowServer().window().viewsNeedDisplay);
  }
  theFramework().send(step.message.type, recordOf(step.message, at_));
}

void Player::count(const DeviceMessage& message) {
  if (!isMotion(message)) return;
  ++motion_;
  const char* const obstacle = obstacleTo(message, scenario_.framework);
  if (obstacle == nullptr) ++motionPassedOn_;
  if (obstacle_ == nullptr) obstacle_ = obstacle;
}

std::string Player::lostMotion() const {
  if (motion_ == 0 || motionPassedOn_ > 0) return {};
  return fmt::format("no motion reached the plug-in ({} {}): {}", motion_,
                     motion_ == 1 ? "sample" : "samples", obstacle_);
}

void Player::act(const ActiveStep& step) {
  active_ = step.active;
  send(kEventClassApplication, step.active ? kEventAppActivated : kEventAppDeactivated);
}

void Player::act(const WindowPendingStep& step) {
  theWindowServer().window().viewsNeedDisplay = step.pending;
}

void Player::act(const ToolbarPendingStep& step) {
  theWindowServer().window().contentNeedsDisplay = step.pending;
}

void Player::act(const RefreshStep& step) {
  theWindowServer().refresh(step.rects);
  report(step.rects);
}

void Player::act(const MouseStep& step) { theWindowServer().mouse = step.place; }

void Player::act(const ClickStep& step) {
  const Dispatched click = send(kEventClassMouse, static_cast<UInt32>(step.click));
  theLog().write("click", {{"kind", nameOf(step.click)}, {"passed", click.reachedHost}});
}

void Player::act(const ModifiersStep& step) { setKeyModifiers(step.modifiers); }

void Player::act(const ToolStep& step) { theHost().setTool(step.tool); }

void Player::act(const BrushStep& step) { theHost().setBrush(step.diameter); }

void Player::act(const WindowStep& step) { setMainWindow(step.window); }

void Player::act(const CloseWindowStep&) { theDocumentView().close(); }

void Player::act(const LayoutStep& step) { keyboardLayout() = step.layout; }

void Player::act(const FailStep& step) { theFaults().add(step.rule); }

void Player::act(const RedrawDelayStep& step) { theDocumentView().redrawDelay = step.milliseconds; }

void Player::act(const PreferenceStep& step) {
  theDocumentView().zoomWithScrollWheel = step.zoomWithScrollWheel;
  HostSetup host = scenario_.host;
  host.zoomWithScrollWheel = step.zoomWithScrollWheel;
  writeHostFiles(host, preferencesFolder(home_.path()));
}

}  // namespace simulator
