#include "simulator/base/Log.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace simulator {

namespace {

bool isPrintable(char c) { return c >= 0x20 && c < 0x7F; }

bool isAlphanumeric(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

IdText charactersOf(std::uint32_t id) {
  return {static_cast<char>(id >> 24), static_cast<char>(id >> 16), static_cast<char>(id >> 8),
          static_cast<char>(id)};
}

// Set while the prelude runs: the lines that it writes must not run it again.
thread_local bool inPrelude = false;

}  // namespace

bool LogLine::beginsWith(std::string_view member) const {
  constexpr std::string_view kWhat = R"("what":")";
  constexpr std::string_view kEnd = R"(",)";
  const std::size_t start = text_.find(kWhat) + kWhat.size() + what_.size() + kEnd.size();
  return start < text_.size() && text_.substr(start).starts_with(member);
}

std::uint64_t LogLine::numberAfter(std::string_view start) const {
  const std::size_t found = text_.find(start);
  if (found == text_.npos) return 0;
  std::uint64_t number = 0;
  std::from_chars(text_.data() + found + start.size(), text_.data() + text_.size(), number);
  return number;
}

std::size_t LogLine::numbersAfter(std::string_view start, std::span<double> numbers) const {
  const std::size_t found = text_.find(start);
  if (found == text_.npos) return 0;
  const char* next = text_.data() + found + start.size();
  const char* const end = text_.data() + text_.size();
  std::size_t count = 0;
  for (double& number : numbers) {
    if (count > 0 && (next == end || *next++ != ',')) break;
    const auto [stop, error] = std::from_chars(next, end, number);
    if (error != std::errc()) break;
    next = stop;
    ++count;
  }
  return count;
}

void LogLine::appendTo(std::string& text) const {
  if (object_ == nullptr) {
    text += text_;
  } else {
    appendJson(text, *object_);
  }
}

Json LogLine::json() const { return object_ == nullptr ? Json::parse(text_) : *object_; }

void Log::setSink(Sink sink) {
  const std::lock_guard lock(mutex_);
  enabled_ = static_cast<bool>(sink);
  sink_ = std::move(sink);
}

void Log::setPrelude(std::function<void()> prelude) {
  const std::lock_guard lock(mutex_);
  prelude_ = std::move(prelude);
}

void Log::runPrelude() {
  if (!prelude_ || inPrelude) return;
  inPrelude = true;
  prelude_();
  inPrelude = false;
}

void Log::write(std::string_view what, std::initializer_list<LogField> fields) {
  if (!enabled()) return;
  runPrelude();
  const std::lock_guard lock(mutex_);
  if (!sink_) return;
  text_ = "{\"t\":";
  appendJson(text_, now());
  text_ += ",\"what\":";
  appendJson(text_, what);
  for (const LogField& field : fields) {
    text_ += ",\"";
    text_ += field.name;
    text_ += "\":";
    field.value.appendTo(text_);
  }
  text_ += '}';
  sink_({what, std::string_view(text_)});
}

void Log::writeObject(std::string_view what, const Json& fields) {
  if (!enabled()) return;
  runPrelude();
  Json line = {{"t", now()}, {"what", what}};
  line.update(fields);
  const std::lock_guard lock(mutex_);
  if (sink_) sink_({what, line});
}

void Log::misuse(const std::string& text) {
  ++misuses_;
  write("misuse", {{"text", text}});
}

Log& theLog() {
  static Log& log = *new Log;
  return log;
}

std::string idText(std::uint32_t id) {
  const auto characters = charactersOf(id);
  const std::string text(characters.begin(), characters.end());
  return std::all_of(text.begin(), text.end(), isPrintable) ? text : fmt::format("{:#010x}", id);
}

std::optional<IdText> plainId(std::uint32_t id) {
  const IdText characters = charactersOf(id);
  const bool plain = std::all_of(characters.begin(), characters.end(), isAlphanumeric);
  return plain ? std::optional(characters) : std::nullopt;
}

void appendId(std::string& to, std::uint32_t id) {
  const auto plain = plainId(id);
  if (!plain) return appendJson(to, idText(id));
  to += '"';
  to.append(plain->data(), plain->size());
  to += '"';
}

}  // namespace simulator
