#include "mrvsim/live/Driver.h"

#include <MoravinClient/MoravinClient.h>
#include <SPInterf.h>

#include <algorithm>
#include <utility>

#include "mrvsim/live/ScenarioJson.h"

namespace simulator::live {

namespace {

constexpr std::int64_t kNanosecondsInMillisecond = 1000000;

/// The device's samples are so many milliseconds apart.
constexpr std::int64_t kSampleTime = 10;
constexpr double kSampleSeconds = 0.01;

/// If the window stood still for longer, the hand's motion meanwhile is left out, in milliseconds.
constexpr std::int64_t kLongestGap = 500;

/// A plug-in that breaks sooner than this after its start has broken quickly, in milliseconds.
constexpr std::int64_t kQuick = 1000;
constexpr int kMostQuickEnds = 3;

bool isAtRest(const Sample& sample) { return sample == Sample{}; }

}  // namespace

Scenario liveSetup() {
  Scenario scenario;
  scenario.host.window = WindowSetup{{{40, 40}, {1360, 822}}, {{40, 40}, {1360, 800}}};
  scenario.host.redrawDelay = 16;
  scenario.mouse = {720, 440};
  return scenario;
}

Driver::Driver(Session& session, Recording& recording, Scenario setup,
               std::optional<std::vector<Step>> demo, bool isMeasured)
    : session_(session),
      recording_(recording),
      setup_(std::move(setup)),
      isDemo_(demo.has_value()),
      demo_(std::move(demo).value_or(std::vector<Step>())),
      isMeasured_(isMeasured) {}

void Driver::start(std::int64_t now) {
  startedAt_ = now_ = now;
  time_ = nextSample_ = 0;
  nextDemoStep_ = 0;
  lastSample_ = {};
  samples_.clear();
  isActive_ = true;
  wantsStart_ = false;
  ++starts_;
  seen_.startAnew();
  const Json setup = setupJson(setup_);
  recording_.begin(setup);
  session_.start(setup);
  if (!isDemo()) take(CallStep{kSPInterfaceCaller, kSPInterfaceStartupSelector});
}

void Driver::advance(std::int64_t now) {
  now_ = now;
  const std::int64_t time = (now - startedAt_) / kNanosecondsInMillisecond;
  if (session_.isOpen() && time > time_) {
    takeDemoUntil(time);
    sampleUntil(time);
    time_ = time;
    session_.reach(time);
  }
  session_.exchange([this](char kind, std::string_view text) { receive(kind, text); });
  if (wantsStart_ && !session_.isOpen()) start(now);
}

void Driver::takeDemoUntil(std::int64_t time) {
  for (; nextDemoStep_ < demo_.size() && demo_[nextDemoStep_].at <= time; ++nextDemoStep_) {
    const Step& step = demo_[nextDemoStep_];
    // A sample of the demo must not come before one of the hand that was already sent.
    sampleUntil(step.at);
    takeAt(step.action, std::max(step.at, time_), isMeasured_ ? now_ : 0);
  }
}

/// While the cap is out of its rest position, the device sends samples, and one when it has come
/// to rest.
void Driver::sampleUntil(std::int64_t time) {
  if (time - nextSample_ > kLongestGap) nextSample_ = time;
  for (; nextSample_ <= time; nextSample_ += kSampleTime) {
    hand_.advance(kSampleSeconds);
    const Sample sample = hand_.sample(fullDeflection);
    const bool wasAtRest = isAtRest(lastSample_);
    const bool isNews = !isAtRest(sample) || (!wasAtRest && !isDemo());
    if (isNews && isPluggedIn_) sendSample(sample, std::max(nextSample_, time_));
  }
}

void Driver::sendSample(const Sample& sample, std::int64_t at) {
  const std::int64_t input = std::exchange(inputTime_, 0);
  const DeviceMessage message = {.type = kMoravinMessageDeviceState,
                                 .client = {},
                                 .command = kMoravinCommandAxes,
                                 .axes = sample};
  takeAt(MessageStep{message}, at, !isMeasured_ ? 0 : input != 0 ? input : now_);
}

void Driver::take(const StepAction& action) { takeAt(action, time_, 0); }

void Driver::takeAt(const StepAction& action, std::int64_t at, std::int64_t inputTime) {
  if (!session_.isOpen()) return remember(action);
  time_ = std::max(time_, at);
  const Json step = stepJson({time_, action});
  recording_.step(step);
  session_.take(step, inputTime);
  remember(action);
  taken(step);
}

/// Keeps what the step changes, so that a plug-in that is started anew finds the same host.
void Driver::remember(const StepAction& action) {
  if (const auto* sample = std::get_if<MessageStep>(&action)) {
    if (sample->message.command != kMoravinCommandAxes) return;
    lastSample_ = sample->message.axes;
    samples_.push_back({time_, lastSample_});
    while (samples_.front().at < time_ - Seen::kRemembered) samples_.pop_front();
  } else if (const auto* active = std::get_if<ActiveStep>(&action)) {
    isActive_ = active->active;
  } else if (const auto* mouse = std::get_if<MouseStep>(&action)) {
    setup_.mouse = mouse->place;
  } else if (const auto* modifiers = std::get_if<ModifiersStep>(&action)) {
    setup_.modifiers = modifiers->modifiers;
  } else if (const auto* tool = std::get_if<ToolStep>(&action)) {
    setup_.host.tool = tool->tool;
  } else if (const auto* brush = std::get_if<BrushStep>(&action)) {
    setup_.host.brush = brush->diameter;
  } else if (const auto* window = std::get_if<WindowStep>(&action)) {
    setup_.host.window = window->window;
  } else if (std::holds_alternative<CloseWindowStep>(action)) {
    setup_.host.window.reset();
  } else if (const auto* layout = std::get_if<LayoutStep>(&action)) {
    setup_.layout = layout->layout;
  } else if (const auto* delay = std::get_if<RedrawDelayStep>(&action)) {
    setup_.host.redrawDelay = delay->milliseconds;
  } else if (const auto* preference = std::get_if<PreferenceStep>(&action)) {
    setup_.host.zoomWithScrollWheel = preference->zoomWithScrollWheel;
  }
}

Deflection Driver::cap() const {
  if (!isDemo()) return hand_.deflection();
  Deflection cap = {};
  std::transform(lastSample_.begin(), lastSample_.end(), cap.begin(), [&](std::int16_t counts) {
    return std::clamp(counts / fullDeflection, -1.0, 1.0);
  });
  return cap;
}

void Driver::noteInput(std::int64_t at) {
  if (inputTime_ == 0) inputTime_ = at;
}

void Driver::setFramework(bool isThere) {
  setup_.framework = isThere;
  restart();
}

void Driver::restart() {
  wantsStart_ = true;
  quickEnds_ = 0;
  session_.finish();
}

void Driver::receive(char kind, std::string_view text) {
  if (kind == message::kLogged) recording_.line(text);
  seen_.receive(kind, text, time_);
  if (kind == message::kEnded && !text.empty()) broke();
}

/// One that breaks at once each time would only flicker.
void Driver::broke() {
  quickEnds_ = time_ < kQuick ? quickEnds_ + 1 : 0;
  wantsStart_ = quickEnds_ < kMostQuickEnds;
}

void Driver::catchUp() {
  session_.catchUp([this](char kind, std::string_view text) { receive(kind, text); });
}

void Driver::finish() {
  // The redraws up to this moment then happen in the recording, too.
  take(MouseStep{setup_.mouse});
  session_.finish();
  session_.waitForEnd([this](char kind, std::string_view text) { receive(kind, text); });
}

}  // namespace simulator::live
