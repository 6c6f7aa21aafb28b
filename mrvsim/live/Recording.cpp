#include "mrvsim/live/Recording.h"

#include <fmt/format.h>

#include <filesystem>
#include <utility>

namespace simulator::live {

std::string numberedName(const std::string& name, int number) {
  const std::filesystem::path path(name);
  if (number == 1) return name;
  const std::string file =
      fmt::format("{}-{}{}", path.stem().string(), number, path.extension().string());
  return (path.parent_path() / file).string();
}

Recording::Recording(std::string scenario, std::string log, std::vector<std::string> inputs)
    : scenarioName_(std::move(scenario)), logName_(std::move(log)), inputs_(std::move(inputs)) {
  starts_ = 1;
  open(scenarioName_, scenario_);
  open(logName_, log_);
  starts_ = 0;
}

void Recording::open(const std::string& name, std::unique_ptr<Output>& output) {
  if (name.empty()) return;
  output = std::make_unique<Output>(numberedName(name, starts_));
  output->expectNoneOf(inputs_);
  output->open();
}

void Recording::begin(const Json& setup) {
  if (++starts_ > 1) {
    end();
    open(scenarioName_, scenario_);
    open(logName_, log_);
  }
  hasSteps_ = false;
  if (!scenario_) return;
  const std::string text = setup.dump(2);
  // The steps become the last member.
  scenario_->write(text.substr(0, text.rfind('\n')) + ",\n  \"steps\": [");
}

void Recording::step(const Json& step) {
  if (!scenario_) return;
  scenario_->write((hasSteps_ ? ",\n    " : "\n    ") + step.dump());
  hasSteps_ = true;
}

void Recording::line(std::string_view line) {
  if (!log_) return;
  log_->write(line);
  log_->write("\n");
}

void Recording::end() {
  if (scenario_ && starts_ > 0) scenario_->write("\n  ]\n}\n");
  if (scenario_) ended_.push_back(std::move(scenario_));
  if (log_) ended_.push_back(std::move(log_));
}

void Recording::commit() {
  end();
  for (const auto& output : ended_) output->prepare();
  for (const auto& output : ended_) output->commit();
}

}  // namespace simulator::live
