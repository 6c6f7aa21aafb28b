#include "mrvsim/live/Seen.h"

#include <CoreGraphics/CoreGraphics.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "simulator/scenario/LogText.h"

namespace simulator::live {

namespace {

constexpr std::size_t kMostLines = 200;
constexpr std::int64_t kNever = -1000000;

/// The line without its end, and with less room for its time.
std::string shortened(std::string line) {
  constexpr std::size_t kRoom = 5;
  line.pop_back();
  const std::size_t blanks = line.find_first_not_of(' ');
  if (blanks != std::string::npos) line.erase(0, std::min(blanks, kRoom));
  return line;
}

}  // namespace

Seen::Seen() { startAnew(); }

void Seen::startAnew() {
  host = {};
  brush_ = -1;
  isLoaded = false;
  happenings.clear();
  keysHeld_.clear();
  last_.fill(kNever);
  lastKey_.fill(kNever);
}

void Seen::receive(char kind, std::string_view text, std::int64_t now) {
  switch (kind) {
    case message::kWasLoaded:
      isLoaded = true;
      break;
    case message::kHostState:
      state(text, now);
      break;
    case message::kLogged:
      line(text);
      break;
    case message::kDelay:
      latency.add(std::stoll(std::string(text)));
      break;
    case message::kEnded:
      isLoaded = false;
      if (text.empty()) break;
      lastBreakdown = text;
      ++breakdowns;
      break;
    default:
      break;
  }
}

void Seen::state(std::string_view bytes, std::int64_t now) {
  const bool wasPending = host.isPending;
  if (bytes.size() == sizeof host)
    std::memcpy(static_cast<void*>(&host), bytes.data(), sizeof host);
  brush_ = host.brush;
  if (wasPending && !host.isPending) happened(kRedrawn, now);
}

void Seen::line(std::string_view text) {
  // Samples come a hundred times a second and are shown otherwise.
  const bool isSample = text.find(R"("what":"posted")") != std::string_view::npos &&
                        text.find(R"("class":"keyb")") == std::string_view::npos;
  if (isSample) return;
  const Json line = jsonOf(text);
  const auto& what = line["what"].get_ref<const std::string&>();
  if (what == "wheel") wheel(line);
  if (what == "view") view(line);
  if (what == "key") key(line);
  if (what == "click") happened(line["passed"] ? kClickPassed : kClickHeldBack, line["t"]);
  if (what == "misuse") ++misuses;
  lines.push_back(shortened(logText(line, false)));
  if (lines.size() > kMostLines) lines.pop_front();
}

void Seen::wheel(const Json& line) {
  const Json& wheels = line["wheels"];
  const bool command = (line["flags"].get<std::uint64_t>() & kCGEventFlagMaskCommand) != 0;
  const int vertical = wheels[0];
  const int horizontal = wheels.size() > 1 ? wheels[1].get<int>() : command ? vertical : 0;
  const std::int64_t at = line["t"];
  if (horizontal != 0) {
    happened(horizontal > 0 ? kPanRight : kPanLeft, at);
  } else if (vertical == 1 || vertical == -1) {
    happened(vertical > 0 ? kZoomIn : kZoomOut, at);
  } else {
    happened(vertical > 0 ? kPanDown : kPanUp, at);
  }
}

/// The key's code depends on the layout, so the brush shows which of its keys it was.
void Seen::view(const Json& line) {
  const Json& brush = line["brush"];
  if (brush.is_null()) return;
  const double before = std::exchange(brush_, brush.get<double>());
  if (before < 0 || before == brush_) return;
  happened(brush_ > before ? kBrushLarger : kBrushSmaller, line["t"]);
}

void Seen::key(const Json& line) {
  const int code = line["key"];
  if (!line["down"]) {
    keysHeld_.erase(code);
    return;
  }
  keysHeld_.insert(code);
  lastKey_[static_cast<std::size_t>(code) % lastKey_.size()] = line["t"];
}

void Seen::happened(Flash flash, std::int64_t at) {
  ++counts[flash];
  last_[flash] = at;
  happenings.push_back({flash, at});
  while (happenings.front().at < at - kRemembered) happenings.pop_front();
}

std::int64_t Seen::since(Flash flash, std::int64_t now) const { return now - last_[flash]; }

std::int64_t Seen::sinceKey(int key, std::int64_t now) const {
  return now - lastKey_[static_cast<std::size_t>(key) % lastKey_.size()];
}

}  // namespace simulator::live
