#include "mrvsim/report/Report.h"

#include <optional>

#include "mrvsim/report/LogEntry.h"
#include "mrvsim/report/Page.h"

namespace simulator {

void Report::line(std::string_view text) {
  const std::optional<PostedSample> quick = quickSample(text);
  const Json entry = quick ? Json() : readLogEntry(text);
  const std::optional<PostedSample> sample = quick ? quick : sampleIn(entry);
  ++number_;
  if (sample) {
    recordingAt(sample->time).sample(number_, *sample);
  } else {
    recordingAt(entry["t"].get<std::int64_t>()).entry(number_, entry);
  }
}

Recording& Report::recordingAt(std::int64_t time) {
  if (plays_.empty() || time < time_) plays_.emplace_back();
  time_ = time;
  return plays_.back();
}

void Report::write(const std::function<void(std::string_view)>& out) {
  out(kPageBeforeData);
  out("{\"plays\":[");
  bool isFirst = true;
  for (Recording& play : plays_) {
    if (!isFirst) out(",");
    isFirst = false;
    play.write(out);
  }
  out("]}");
  out(kPageAfterData);
}

}  // namespace simulator
