#include "simulator/scenario/Summary.h"

#include <CoreGraphics/CoreGraphics.h>
#include <MoravinClient/MoravinClient.h>
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <numeric>

#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

constexpr std::size_t kMostMisusesShown = 5;
constexpr double kPercent = 100;
constexpr double kZoomAtTheStart = 100;

/// The text with a capital letter.
std::string capitalised(std::string text) {
  text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return text;
}

std::string summaryRow(const char* name, const std::string& text) {
  return fmt::format("{:12}{}\n", name, text);
}

}  // namespace

Summary::Summary(std::optional<double> brush)
    : zoom_{kZoomAtTheStart, kZoomAtTheStart, kZoomAtTheStart, kZoomAtTheStart} {
  timeline_.set(Timeline::kZoom, 0, kZoomAtTheStart);
  if (brush) brushSize(*brush);
}

void Summary::Range::take(double value) {
  least = std::min(least, value);
  most = std::max(most, value);
  last = value;
}

void Summary::message(const DeviceMessage& message, bool active, bool pending) {
  now_ = theLog().now();
  timeline_.reach(now_);
  if (message.command != kMoravinCommandAxes) {
    ++otherMessages_;
    return;
  }
  if (sampleCount() == 0) firstSample_ = now_;
  lastSample_ = now_;
  // In the background the plug-in passes every sample on as one at rest.
  if (!active) ++inBackground_;
  const MotionKind kind = active ? motionKind(message.axes) : MotionKind::kRest;
  sample(kind, pending);
  if (active) ++samples_[index(kind)];
}

/// Mirrors the plug-in's pacing: after a tick it drops samples until the redraw.
void Summary::sample(MotionKind kind, bool pending) {
  if (kind == MotionKind::kTwist || (wait_.value() == 0 && !pending)) return;
  if (kind != MotionKind::kRest) ++dropped_;
  if (wait_.drop()) endWait();
}

void Summary::redrawn() {
  now_ = theLog().now();
  endWait();
}

void Summary::endWait() {
  if (waitingSince_) {
    longestWait_ = std::max(longestWait_, now_ - *waitingSince_);
    timeline_.addSpan(Timeline::kWaiting, *waitingSince_, now_);
  }
  waitingSince_.reset();
  wait_.end();
}

void Summary::line(const LogLine& logged) {
  const std::string_view what = logged.what();
  // Most lines are those of posted samples, which come by `message`; then those of the view.
  if (what == "posted") return posted(logged);
  if (what == "view") return view(logged);
  const Json line = logged.json();
  now_ = line["t"];
  timeline_.reach(now_);
  if (what == "wheel") {
    const Json& wheels = line["wheels"];
    const bool command = (line["flags"].get<std::uint64_t>() & kCGEventFlagMaskCommand) != 0;
    wheel(wheels[0], wheels.size() > 1 || command);
  } else if (what == "key") {
    key({false, line["key"]}, line["down"]);
  } else if (what == "click") {
    click(line["passed"]);
  } else if (what == "misuse") {
    misuse(line["text"]);
  }
}

void Summary::reach(const LogLine& line) {
  now_ = static_cast<std::int64_t>(line.numberAfter(R"({"t":)"));
  timeline_.reach(now_);
}

void Summary::posted(const LogLine& line) {
  if (!line.beginsWith(R"("class":"keyb")")) return;
  reach(line);
  brushKey(line.numberAfter(R"(["kcod","magn",)"), line.has(R"("kind":1,)"));
}

void Summary::wheel(int vertical, bool sideways) {
  if (!sideways && std::abs(vertical) == 1) {
    ++(vertical > 0 ? zoomIn_ : zoomOut_);
    timeline_.add(vertical > 0 ? Timeline::kZoomIn : Timeline::kZoomOut, now_);
  } else {
    ++(sideways ? horizontal_ : vertical_);
    timeline_.add(Timeline::kPan, now_);
  }
  if (!wait_.begin()) return;
  waitingSince_ = now_;
  ++waits_;
}

void Summary::brushKey(std::uint64_t code, bool down) {
  if (down) {
    ++brushKeys_;
    timeline_.add(Timeline::kBrushKeys, now_);
  }
  key({true, code}, down);
}

void Summary::key(std::pair<bool, std::uint64_t> which, bool down) {
  if (down) {
    keysDown_.insert(which);
  } else {
    keysDown_.erase(which);
  }
}

void Summary::click(bool passed) {
  ++clicks_;
  if (passed) return;
  ++clicksHeldBack_;
  timeline_.add(Timeline::kHeldBack, now_);
}

void Summary::misuse(const std::string& text) {
  ++misuses_;
  if (firstMisuses_.size() < kMostMisusesShown) firstMisuses_.push_back(printable(text));
}

void Summary::view(const LogLine& line) {
  reach(line);
  viewChanged_ = true;
  double zoom = 0;
  line.numbersAfter(R"("zoom":)", {&zoom, 1});
  zoom_.take(zoom * kPercent);
  timeline_.set(Timeline::kZoom, now_, zoom * kPercent);
  line.numbersAfter(R"("origin":[)", origin_);
  double brush = 0;
  if (line.numbersAfter(R"("brush":)", {&brush, 1}) == 1) brushSize(brush);
}

void Summary::brushSize(double size) {
  if (!brush_) brush_ = Range{size, size, size, size};
  brush_->take(size);
  timeline_.set(Timeline::kBrushSize, now_, size);
}

std::uint64_t Summary::sampleCount() const {
  return std::accumulate(samples_.begin(), samples_.end(), inBackground_);
}

/// How long the device sent samples; whole seconds if it is long.
std::string Summary::motionTime() const {
  constexpr std::int64_t kLong = 10000;
  constexpr std::int64_t kSecond = 1000;
  const std::int64_t time = lastSample_ - firstSample_;
  if (time == 0) return "A moment";
  return secondsText(time < kLong ? time : (time + kSecond / 2) / kSecond * kSecond);
}

std::string Summary::text() const {
  Timeline timeline = timeline_;
  if (waitingSince_) timeline.addSpan(Timeline::kWaiting, *waitingSince_, now_);
  const std::string picture = timeline.text();
  return verdict() + "\n\n" + picture + (picture.empty() ? "" : "\n") + deviceLine() + zoomLine() +
         panLine() + brushLine() + waitLines() + clickLine() + misuseLines();
}

std::string Summary::verdict() const { return whatHappened() + "; " + whatWentWrong() + "."; }

std::string Summary::whatHappened() const {
  if (!lostMotion_.empty()) return capitalised(lostMotion_);
  if (sampleCount() == 0) return "The device did not move";
  std::vector<std::string> parts;
  const auto add = [&](std::uint64_t count, const char* noun) {
    if (count > 0) parts.push_back(counted(count, noun));
  };
  add(zoomIn_ + zoomOut_, "zoom tick");
  add(vertical_ + horizontal_, "pan tick");
  add(brushKeys_, "brush key");
  if (parts.empty() && clicksHeldBack_ > 0) {
    parts.push_back(counted(clicksHeldBack_, "click") + " held back");
  }
  const std::string result =
      parts.empty() ? "nothing came of it" : fmt::format("{}", fmt::join(parts, ", "));
  return fmt::format("{} of motion: {}", motionTime(), result);
}

std::string Summary::whatWentWrong() const {
  const std::string misuse =
      misuses_ == 0 ? "nothing leaked" : counted(misuses_, "misuse") + " of the host or the system";
  const std::string keys =
      keysDown_.empty() ? "no key left down" : counted(keysDown_.size(), "key") + " left down";
  return misuse + ", " + keys;
}

std::string Summary::deviceLine() const {
  std::string text = fmt::format("{}: {} push or pull, {} slide, {} twist, {} at rest",
                                 counted(sampleCount(), "sample"), samplesOf(MotionKind::kPush),
                                 samplesOf(MotionKind::kSlide), samplesOf(MotionKind::kTwist),
                                 samplesOf(MotionKind::kRest));
  text = summaryRow("Device", text);
  if (inBackground_ > 0) {
    text +=
        summaryRow("", counted(inBackground_, "sample") + " while the host was in the background");
  }
  if (otherMessages_ > 0) {
    text += summaryRow("", counted(otherMessages_, "message") + " of buttons and other things");
  }
  return text;
}

std::string Summary::zoomLine() const {
  std::string text = fmt::format("{} in, {} out", counted(zoomIn_, "tick"), zoomOut_);
  if (viewChanged_) text += "; " + rangeText(zoom_, "%");
  return summaryRow("Zoom", text);
}

std::string Summary::panLine() const {
  std::string text =
      fmt::format("{} up or down, {} sideways", counted(vertical_, "tick"), horizontal_);
  if (viewChanged_) {
    text += fmt::format("; the view's corner ends at ({:.0f}, {:.0f})", origin_[0], origin_[1]);
  }
  return summaryRow("Pan", text);
}

std::string Summary::brushLine() const {
  std::string text = counted(brushKeys_, "key");
  if (brush_) text += "; " + rangeText(*brush_, "px");
  return summaryRow("Brush", text);
}

std::string Summary::rangeText(const Range& range, const char* unit) {
  if (range.least == range.most) return fmt::format("{:.4g} {} all the time", range.last, unit);
  return fmt::format("{:.4g} {} at first, from {:.4g} to {:.4g}, {:.4g} at the end", range.first,
                     unit, range.least, range.most, range.last);
}

std::string Summary::waitLines() const {
  return summaryRow("Waiting", fmt::format("{} for the host to redraw after a tick, the longest {}",
                                           counted(waits_, "time"), secondsText(longestWait_))) +
         summaryRow("", counted(dropped_, "sample") +
                            " without effect meanwhile (inferred from the ticks and redraws)");
}

std::string Summary::clickLine() const {
  return summaryRow("Clicks", fmt::format("{} of {} held back from the host during a pan",
                                          clicksHeldBack_, clicks_));
}

std::string Summary::misuseLines() const {
  std::string text;
  for (const std::string& misuse : firstMisuses_)
    text += summaryRow(text.empty() ? "Misuses" : "", misuse);
  const std::uint64_t more = misuses_ - firstMisuses_.size();
  if (more > 0) text += summaryRow("", fmt::format("and {} more; the log has them all", more));
  return text;
}

}  // namespace simulator
