// What holds of every scenario: random ones are played, and one that breaks a property is cut down
// to the steps that do.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "simulator/base/Json.h"
#include "tests/support/Build.h"
#include "tests/support/Process.h"
#include "tests/support/RandomScenario.h"

namespace {

using simulator::Json;
using simulator::jsonOf;
using testing_support::Finished;
using testing_support::RandomScenario;
using testing_support::randomScenario;
using testing_support::run;
using testing_support::TemporaryFolder;
using testing_support::textOf;

#ifdef MRV_LONG_TESTS
constexpr unsigned kScenarios = testing_support::kSanitized ? 300 : 3000;
#else
constexpr unsigned kScenarios = testing_support::kSanitized ? 10 : 40;
#endif

/// What a scenario does to the plug-in, followed step by step beside the log.
class Observer {
 public:
  explicit Observer(const RandomScenario& scenario)
      : redraws_(scenario.host.contains("redrawDelay")) {}

  /// The property that a step breaks; empty if it breaks none.
  std::string take(const Json& step, const std::vector<Json>& lines) {
    before(step);
    std::string broken;
    for (const Json& line : lines) {
      if (broken.empty()) broken = takeLine(line);
    }
    if (broken.empty()) broken = after(step, lines);
    return broken;
  }

 private:
  void before(const Json& step) {
    if (step.contains("window")) hasWindow_ = !step["window"].is_null();
    if (step.contains("closeWindow")) hasWindow_ = false;
    // After the first "Shutdown" the plug-in no longer follows the host's activation.
    if (step.contains("active") && follows_) active_ = step["active"];
    if (step.contains("axes") && connected_) ++samples_;
  }

  std::string takeLine(const Json& line) {
    const std::string what = line["what"];
    if (what == "misuse") return "misuse: " + line["text"].get<std::string>();
    if (what == "framework" && line["do"] == "register") connected_ = line["client"] != 0;
    if (what == "framework" && line["do"] == "cleanup") connected_ = false;
    if (what == "handler" && line["types"][0][0] == "appl") follows_ = line["do"] == "install";
    const bool isTyped = what == "posted" && line["class"] == "keyb";
    if ((what == "wheel" || what == "key" || isTyped) && !active_) return "input in the background";
    if (what == "key" && line["down"] == true && !down_.insert(line["key"].get<int>()).second) {
      return "a key is pressed twice";
    }
    if (what == "key" && line["down"] == false && down_.erase(line["key"].get<int>()) == 0) {
      return "a key is released that is not down";
    }
    if (isTyped) typed_ += line["kind"] == 1 ? 1 : -1;
    if (what == "wheel") return takeTick();
    return "";
  }

  std::string takeTick() {
    const long apart = samples_ - lastTick_;
    const bool isFirst = lastTick_ < 0;
    lastTick_ = samples_;
    strong_ = 0;
    return !redraws_ && !isFirst && apart < 52 ? "a tick before the redraw" : "";
  }

  std::string after(const Json& step, const std::vector<Json>& lines) {
    if (!down_.empty() || typed_ != 0) return "a key is left down";
    if (step.contains("axes") && connected_ && active_) {
      const Json& axes = step["axes"];
      rests_ = std::all_of(axes.begin(), axes.end(), [](const Json& axis) { return axis == 0; });
      const bool isPush = axes[1] != 0 && axes[0] == 0 && axes[2] == 0 && axes[4] == 0;
      const bool ticked = lastTick_ == samples_;
      strong_ =
          isPush && std::abs(axes[1].get<int>()) > 21 && hasWindow_ && !ticked ? strong_ + 1 : 0;
    } else if (step.contains("axes") && connected_) {
      rests_ = true;
      strong_ = 0;
    } else if (!hasWindow_ || !connected_) {
      strong_ = 0;
    }
    // A redraw that is due when the pushes begin may cost one sample more.
    if (strong_ >= (redraws_ ? 53 : 52)) return "no tick in 52 pushes";
    for (const Json& line : lines) {
      if (line["what"] == "click" && line["passed"] == false && rests_) {
        return "a click is held back from the host at rest";
      }
    }
    return "";
  }

  const bool redraws_;
  bool connected_ = false;
  bool follows_ = false;
  bool active_ = true;
  bool hasWindow_ = true;
  bool rests_ = true;
  std::set<int> down_;
  int typed_ = 0;
  long samples_ = 0;
  long lastTick_ = -1;
  int strong_ = 0;
};

/// Plays a scenario and returns the property that it breaks; empty if it breaks none.
std::string brokenProperty(const RandomScenario& scenario) {
  const TemporaryFolder folder;
  testing_support::writeFile(folder.file("s.json"), textOf(scenario));
  const Finished played = run({MRVSIM, "play", folder.file("s.json")});
  if (played.status != 0 && played.status != 3) {
    return "exit status " + std::to_string(played.status) + ": " + played.errors;
  }
  std::map<std::size_t, std::vector<Json>> lines;
  std::istringstream log(played.output);
  for (std::string text; std::getline(log, text);) {
    Json line = jsonOf(text);
    const std::size_t at = line["t"];
    lines[at].push_back(std::move(line));
  }
  Observer observer(scenario);
  for (std::size_t i = 0; i < scenario.steps.size(); ++i) {
    const std::string broken = observer.take(scenario.steps[i], lines[i]);
    if (!broken.empty()) return broken;
  }
  return "";
}

/// The scenario without the steps that its failure does not need.
RandomScenario shrunk(RandomScenario scenario,
                      const std::function<bool(const RandomScenario&)>& stillFails) {
  for (std::size_t length = scenario.steps.size(); length > 0; length /= 2) {
    for (std::size_t at = 0; at + length <= scenario.steps.size();) {
      RandomScenario smaller = scenario;
      const auto first = smaller.steps.begin() + static_cast<std::ptrdiff_t>(at);
      smaller.steps.erase(first, first + static_cast<std::ptrdiff_t>(length));
      if (stillFails(smaller)) {
        scenario = smaller;
      } else {
        at += length;
      }
    }
  }
  return scenario;
}

TEST(Properties, HoldOfRandomScenarios) {
  for (unsigned seed = 1; seed <= kScenarios; ++seed) {
    const RandomScenario scenario = randomScenario(seed);
    const std::string broken = brokenProperty(scenario);
    if (broken.empty()) continue;
    const RandomScenario least = shrunk(
        scenario, [&](const RandomScenario& smaller) { return brokenProperty(smaller) == broken; });
    FAIL() << "seed " << seed << ": " << broken << "; the least scenario that does it:\n"
           << textOf(least);
  }
}

TEST(PropertiesGenerator, MakesTheSameScenarioOfASeedAndManyKindsOfSteps) {
  std::set<std::string> kinds;
  for (unsigned seed = 1; seed <= 20; ++seed) {
    const RandomScenario scenario = randomScenario(seed);
    EXPECT_EQ(textOf(scenario), textOf(randomScenario(seed)));
    for (const Json& step : scenario.steps) kinds.insert(step.begin().key());
  }
  EXPECT_THAT(kinds, testing::IsSupersetOf({"active", "axes", "brush", "button", "call", "click",
                                            "closeWindow", "fail", "window"}));
}

TEST(PropertiesShrinking, LeavesTheStepsThatTheFailureNeeds) {
  RandomScenario scenario = randomScenario(3);
  scenario.steps.insert(scenario.steps.begin() + 7, {{"closeWindow", true}});
  scenario.steps.push_back({{"layout", "x"}});
  const auto count = [](const RandomScenario& of, const char* kind) {
    return std::count_if(of.steps.begin(), of.steps.end(),
                         [&](const Json& step) { return step.contains(kind); });
  };
  const RandomScenario least = shrunk(scenario, [&](const RandomScenario& smaller) {
    return count(smaller, "closeWindow") > 0 && count(smaller, "layout") > 0;
  });
  EXPECT_THAT(least.steps,
              testing::ElementsAre(Json{{"closeWindow", true}}, Json{{"layout", "x"}}));
}

}  // namespace
