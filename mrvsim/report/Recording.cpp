#include "mrvsim/report/Recording.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "simulator/scenario/LogText.h"

namespace simulator {

namespace {

// The page divides by these.
constexpr double kZoomScale = 10000;
constexpr double kPixelScale = 10;

/// How bad a line is.
enum Level : int { kFine = 0, kFailed = 1, kMisuse = 2 };

/// A number in a column, with as many decimals as the scale has zeros. What is not a number counts
/// as 0.
std::int64_t scaled(const Json& number, double scale) {
  constexpr double kMost = 1e12;
  const double value = number.is_number() ? number.get<double>() : 0.0;
  return std::llround(std::clamp(value * scale, -kMost, kMost));
}

/// 0 if the tool has no brush; otherwise one more than the scaled diameter.
std::int64_t brushIn(const Json& diameter) {
  return diameter.is_null() ? 0 : scaled(diameter, kPixelScale) + 1;
}

/// The code of the key in a posted event; 0 if it has none.
std::int64_t keyCodeIn(const Json& line) {
  for (const Json& parameter : line["parameters"]) {
    if (parameter[0] == "kcod") return scaled(parameter[2], 1);
  }
  return 0;
}

/// The place of a click's kind in the page's list.
std::int64_t clickIndex(const Json& kind) {
  constexpr std::array kKinds = {"down", "up", "moved", "dragged"};
  return std::find(kKinds.begin(), kKinds.end(), kind) - kKinds.begin();
}

bool isFailure(const Json& line) {
  const char* const name = line["what"] == "result" ? "value" : "result";
  const auto result = line.find(name);
  return result != line.end() && *result != 0;
}

Level levelOf(const Json& line) {
  if (line["what"] == "misuse") return kMisuse;
  return isFailure(line) ? kFailed : kFine;
}

/// JSON text that can stand in a page: no text in it looks like the end of a script.
std::string pageJson(const Json& value) {
  std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos;) {
    text.replace(at, 1, "\\u003c");
  }
  return text;
}

}  // namespace

EntryTable::EntryTable(std::initializer_list<const char*> names) : names_{"line", "time"} {
  names_.insert(names_.end(), names);
  columns_.assign(2, Column(Column::Form::kSlopes));
  columns_.resize(names_.size());
}

void EntryTable::add(std::initializer_list<std::int64_t> values) {
  auto column = columns_.begin();
  for (const std::int64_t value : values) (column++)->append(value);
}

std::string EntryTable::json() const {
  std::string text = fmt::format("{{\"size\":{}", columns_.front().size());
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    text += fmt::format(",\"{}\":\"{}\"", names_[i], columns_[i].base64());
  }
  return text + "}";
}

Recording::Recording()
    : ticks_{"vertical", "horizontal", "flags", "x", "y"},
      keys_{"code", "down", "brush"},
      clicks_{"kind", "passed"},
      views_{"zoom", "x", "y", "brush"},
      notes_{"text"} {}

void Recording::finishSample() {
  if (samples_.events.size() < samples_.time.size()) samples_.events.append(events_);
  events_ = 0;
}

void Recording::sample(std::int64_t number, const PostedSample& sample) {
  finishSample();
  sampleLines_.append(number);
  samples_.time.append(sample.time);
  for (std::size_t i = 0; i < sample.axes.size(); ++i) samples_.axes[i].append(sample.axes[i]);
}

void Recording::entry(std::int64_t number, const Json& line) {
  const std::int64_t time = line["t"].get<std::int64_t>();
  const auto& what = line["what"].get_ref<const std::string&>();
  if (what == "posted") {
    posted(number, line);
  } else if (what == "wheel") {
    wheel(number, line);
  } else if (what == "key") {
    keys_.add({number, time, line["key"].get<std::int64_t>(), line["down"] == true, false});
  } else if (what == "click") {
    clicks_.add({number, time, clickIndex(line["kind"]), line["passed"] == true});
  } else if (what == "view") {
    view(number, line);
  } else {
    note(number, line);
  }
}

/// Keys of the brush are posted as events; what else is posted is a button or a command.
void Recording::posted(std::int64_t number, const Json& line) {
  if (line["class"] != "keyb") return note(number, line);
  constexpr int kRawKeyDown = 1;
  const bool isDown = line["kind"] == kRawKeyDown;
  if (isDown) events_ |= kBrushKeyPosted;
  keys_.add({number, line["t"].get<std::int64_t>(), keyCodeIn(line), isDown, true});
}

void Recording::wheel(std::int64_t number, const Json& line) {
  events_ |= kTickPosted;
  const Json& wheels = line["wheels"];
  const std::int64_t horizontal = wheels.size() > 1 ? wheels[1].get<std::int64_t>() : 0;
  const Json& location = line["location"];
  ticks_.add({number, line["t"].get<std::int64_t>(), wheels[0].get<std::int64_t>(), horizontal,
              static_cast<std::uint32_t>(line["flags"].get<std::uint64_t>()),
              scaled(location[0], kPixelScale), scaled(location[1], kPixelScale)});
}

void Recording::view(std::int64_t number, const Json& line) {
  events_ |= kHostReacted;
  const Json& origin = line["origin"];
  views_.add({number, line["t"].get<std::int64_t>(), scaled(line["zoom"], kZoomScale),
              scaled(origin[0], kPixelScale), scaled(origin[1], kPixelScale),
              brushIn(line["brush"])});
}

void Recording::note(std::int64_t number, const Json& line) {
  const Level level = levelOf(line);
  if (line["what"] == "get" && level == kFailed) events_ |= kHostRefused;
  const auto [text, isNew] = texts_.try_emplace(pageJson({line["what"], logWords(line), level}),
                                                static_cast<std::int64_t>(texts_.size()));
  if (isNew) textsInOrder_.push_back(&text->first);
  notes_.add({number, line["t"].get<std::int64_t>(), text->second});
}

void Recording::writeSamples(const std::function<void(std::string_view)>& out) const {
  const Fates fates = inferFates(samples_);
  out(fmt::format("\"redrawDelay\":{},",
                  fates.redrawDelay ? std::to_string(*fates.redrawDelay) : "null"));
  out(fmt::format("\"samples\":{{\"size\":{}", samples_.time.size()));
  const auto column = [&](const std::string& name, const Column& values) {
    out(fmt::format(",\"{}\":\"{}\"", name, values.base64()));
  };
  column("line", sampleLines_);
  column("time", samples_.time);
  for (std::size_t i = 0; i < samples_.axes.size(); ++i) {
    column(fmt::format("axis{}", i), samples_.axes[i]);
  }
  column("fate", fates.fates);
  column("wait", fates.waits);
  out("}");
}

void Recording::write(const std::function<void(std::string_view)>& out) {
  finishSample();
  out("{");
  writeSamples(out);
  const std::initializer_list<std::pair<const char*, const EntryTable&>> tables = {
      {"ticks", ticks_},
      {"keys", keys_},
      {"clicks", clicks_},
      {"views", views_},
      {"notes", notes_}};
  for (const auto& [name, table] : tables) out(fmt::format(",\"{}\":{}", name, table.json()));
  out(",\"texts\":[");
  for (std::size_t i = 0; i < textsInOrder_.size(); ++i) {
    out(i == 0 ? "" : ",");
    out(*textsInOrder_[i]);
  }
  out("]}");
}

}  // namespace simulator
