#include "mrvsim/live/Window.h"

#include <MoravinClient/MoravinClient.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace simulator::live {

namespace {

constexpr double kNanosecondsInSecond = 1e9;

constexpr float kTopHeight = 48;
constexpr float kSideWidth = 404;
constexpr float kBottomHeight = 214;
constexpr float kGap = 1;

/// What a held key does to the cap.
struct CapKey {
  SDL_Scancode key;
  Axis axis;
  int direction;
};
constexpr CapKey kCapKeys[] = {
    {SDL_SCANCODE_LEFT, kSideways, -1}, {SDL_SCANCODE_RIGHT, kSideways, 1},
    {SDL_SCANCODE_UP, kUpward, 1},      {SDL_SCANCODE_DOWN, kUpward, -1},
    {SDL_SCANCODE_W, kPush, 1},         {SDL_SCANCODE_S, kPush, -1},
    {SDL_SCANCODE_D, kTwist, 1},        {SDL_SCANCODE_A, kTwist, -1},
    {SDL_SCANCODE_R, kTiltBack, 1},     {SDL_SCANCODE_F, kTiltBack, -1},
    {SDL_SCANCODE_E, kTiltAside, 1},    {SDL_SCANCODE_Q, kTiltAside, -1}};

}  // namespace

Window::Window(Driver& driver, StatusLines& status, AxisMaps maps,
               const std::filesystem::path& mapsFile)
    : driver_(driver),
      status_(status),
      canvas_("MrvPhotoshop \xE2\x80\x93 live", kWindowWidth, kWindowHeight),
      devices_(std::move(maps)),
      widgets_(canvas_.strong(), [this](const std::string& name, ImVec2 from,
                                        ImVec2 to) { status_.place(name, from, to); }),
      extras_(mapsFile),
      texture_(canvas_.makeTexture(Picture::kWidth, Picture::kHeight, true)) {
  showPaint({0, 0, Picture::kWidth, Picture::kHeight});
  driver_.taken = [this](const Json& step) { status_.step(step); };
}

void Window::take(const SDL_Event& event, std::int64_t now) {
  canvas_.take(event);
  if (devices_.take(event)) {
    driver_.hand().follow(devices_.deflection());
    driver_.noteInput(now);
  }
  switch (event.type) {
    case SDL_QUIT:
      isClosed_ = true;
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      key(event.key, now);
      break;
    case SDL_MOUSEMOTION:
      mouse_ = ImVec2{static_cast<float>(event.motion.x), static_cast<float>(event.motion.y)};
      break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      mouseButton(event.button);
      break;
    case SDL_JOYBUTTONDOWN:
    case SDL_JOYBUTTONUP: {
      DeviceMessage message = {.type = kMoravinMessageDeviceState, .client = {}};
      message.command = kMoravinCommandButtons;
      message.button = static_cast<std::uint16_t>(event.jbutton.button + 1);
      message.value = event.type == SDL_JOYBUTTONDOWN ? 1 : 0;
      driver_.take(MessageStep{message});
      break;
    }
    case SDL_WINDOWEVENT:
      if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) driver_.hand().letGo();
      break;
    default:
      break;
  }
}

void Window::key(const SDL_KeyboardEvent& event, std::int64_t now) {
  const bool isDown = event.type == SDL_KEYDOWN;
  if (event.repeat != 0 || (isDown && ImGui::GetIO().WantTextInput)) return;
  for (const CapKey& key : kCapKeys) {
    if (key.key != event.keysym.scancode) continue;
    driver_.hand().press(key.axis, key.direction, isDown);
    driver_.noteInput(now);
  }
}

/// Whether a list or a message lies over a part of the screen. Only with one of them is it asked
/// what the mouse was over in the last picture, because it may have moved since.
bool Window::isScreenCovered() const {
  const bool isListOpen =
      ImGui::IsPopupOpen("", ImGuiPopupFlags_AnyPopupId | ImGuiPopupFlags_AnyPopupLevel);
  const bool isMessageShown = dismissed_ < driver_.seen().breakdowns;
  return (isListOpen || isMessageShown) && ImGui::GetIO().WantCaptureMouse;
}

/// A click on the panels is not one of the host's.
void Window::mouseButton(const SDL_MouseButtonEvent& event) {
  if (event.button != SDL_BUTTON_LEFT) return;
  mouse_ = ImVec2{static_cast<float>(event.x), static_cast<float>(event.y)};
  const bool isOnScreen = screen_.contains(*mouse_) && !isScreenCovered();
  passMouse();
  if (event.type == SDL_MOUSEBUTTONDOWN && isOnScreen) {
    isButtonDown_ = true;
    driver_.take(ClickStep{Click::kDown});
  } else if (event.type == SDL_MOUSEBUTTONUP && std::exchange(isButtonDown_, false)) {
    driver_.take(ClickStep{Click::kUp});
  }
}

void Window::passMouse() {
  const std::optional<ImVec2> place = std::exchange(mouse_, std::nullopt);
  if (!place || (!screen_.contains(*place) && !isButtonDown_)) return;
  const CGPoint exact = screen_.toScreen(*place);
  const CGPoint there = {std::round(exact.x), std::round(exact.y)};
  const CGPoint before = driver_.setup().mouse;
  if (there.x == before.x && there.y == before.y) return;
  driver_.take(MouseStep{there});
  if (isButtonDown_) driver_.take(ClickStep{Click::kDragged});
}

/// A click that reached the host paints: a spot, or a line if the button stays down.
void Window::paint() {
  const Seen& seen = driver_.seen();
  const bool isNew = seen.counts[kClickPassed] != clicksPassed_;
  clicksPassed_ = seen.counts[kClickPassed];
  const HostState& host = seen.host;
  if (!isNew || !host.hasWindow || host.brush <= 0) return;
  const CGPoint mouse = driver_.setup().mouse;
  const double top = host.content.origin.y + host.content.size.height;
  const CGPoint place = {(mouse.x - host.content.origin.x - host.origin.x) / host.zoom,
                         (top - mouse.y - host.origin.y) / host.zoom};
  const CGPoint from = lastPaint_.value_or(place);
  const double distance = std::hypot(place.x - from.x, place.y - from.y);
  const int spots = 1 + static_cast<int>(distance / std::max(host.brush / 4, 1.0));
  for (int i = 1; i <= spots; ++i) {
    const double share = double{1} * i / spots;
    showPaint(picture_.paint(from.x + (place.x - from.x) * share,
                             from.y + (place.y - from.y) * share, host.brush));
  }
  lastPaint_ = isButtonDown_ ? std::optional(place) : std::nullopt;
}

void Window::showPaint(const PixelRect& changed) {
  if (changed.width <= 0 || changed.height <= 0) return;
  const SDL_Rect rect = {changed.x, changed.y, changed.width, changed.height};
  const std::ptrdiff_t first = std::ptrdiff_t{changed.y} * Picture::kWidth + changed.x;
  SDL_UpdateTexture(texture_.get(), &rect, picture_.pixels() + first, Picture::kBytesInRow);
}

void Window::draw(std::int64_t now) {
  paint();
  status_.seen(driver_.seen());
  const double seconds = lastDrawn_ == 0
                             ? frameSeconds_
                             : static_cast<double>(now - lastDrawn_) / kNanosecondsInSecond;
  lastDrawn_ = now;
  // Smooth enough to be read.
  frameSeconds_ += (std::max(seconds, 1e-4) - frameSeconds_) * 0.05;
  const Uint64 begin = SDL_GetPerformanceCounter();
  canvas_.begin(std::max(seconds, 1e-4));
  layOut();
  canvas_.end();
  const auto ticks = static_cast<double>(SDL_GetPerformanceCounter() - begin);
  const double milliseconds = ticks * 1000 / static_cast<double>(SDL_GetPerformanceFrequency());
  frameTime_ += (milliseconds - frameTime_) * 0.05;
  status_.drawn();
}

void Window::layOut() {
  const ImVec2 size = canvas_.size();
  const float left = size.x - kSideWidth - kGap;
  const float bottom = size.y - kBottomHeight;
  const Area middle = {0, kTopHeight + kGap, left, bottom - kTopHeight - 2 * kGap};
  constexpr float kMargin = 12;
  screen_ = fitScreen({middle.x + kMargin, middle.y + kMargin, middle.width - 2 * kMargin,
                       middle.height - 2 * kMargin},
                      driver_.setup().host.screenHeight);
  const Stage stage = {driver_,           devices_,        widgets_,        canvas_.plain(),
                       canvas_.strong(),  canvas_.large(), canvas_.fixed(), texture_.get(),
                       1 / frameSeconds_, frameTime_};
  drawTopBar(stage, {0, 0, size.x, kTopHeight});
  ImGui::PushStyleColor(ImGuiCol_WindowBg, kBackground.shade());
  beginPart("screen", middle, ImGuiWindowFlags_NoInputs);
  drawScreen(stage, screen_);
  ImGui::End();
  ImGui::PopStyleColor();
  drawMotion(stage, {left + kGap, kTopHeight + kGap, kSideWidth, size.y - kTopHeight - kGap});
  const float half = left * 0.43F;
  const float quarter = left * 0.23F;
  drawHost(stage, {0, bottom, half, kBottomHeight});
  extras_.draw(stage, {half + kGap, bottom, quarter, kBottomHeight});
  const float logLeft = half + quarter + 2 * kGap;
  drawLog(stage, {logLeft, bottom, left - logLeft, kBottomHeight});
  const int breakdowns = driver_.seen().breakdowns;
  if (dismissed_ < breakdowns && drawBreakdown(stage, middle)) dismissed_ = breakdowns;
}

}  // namespace simulator::live
