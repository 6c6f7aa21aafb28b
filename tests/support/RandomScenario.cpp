#include "tests/support/RandomScenario.h"

#include <array>
#include <random>
#include <utility>

namespace testing_support {

namespace {

using simulator::Json;

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  RandomScenario scenario() {
    scenario_ = {};
    if (below(2) == 0) scenario_.host["redrawDelay"] = below(20);
    if (below(4) == 0) scenario_.host["zoomWithScrollWheel"] = true;
    add({{"call", {"SP Interface", "Startup"}}});
    const int parts = 5 + below(25);
    for (int part = 0; part < parts; ++part) addPart();
    return scenario_;
  }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  void add(Json step) { scenario_.steps.push_back(std::move(step)); }
  void addAxes(const std::array<int, 6>& axes) { add({{"axes", axes}}); }

  int strength() { return (below(2) == 0 ? 1 : -1) * (30 + below(300)); }

  void addMotion() {
    const int kind = below(5);
    const int samples = 1 + below(kind == 0 ? 140 : 30);
    const int strong = strength();
    for (int i = 0; i < samples; ++i) {
      switch (kind) {
        case 0:
          addAxes({0, strong, 0, 0, 0, 0});
          break;
        case 1:
          addAxes({strong, 0, below(50), 0, 0, 0});
          break;
        case 2:
          addAxes({0, 0, 0, 0, strong, 0});
          break;
        default:
          addAxes({strength() / 30, strength() / 30, strength() / 30, 0, strength() / 30, 0});
      }
    }
    if (below(3) != 0) addAxes({0, 0, 0, 0, 0, 0});
  }

  void addPart() {
    static const std::vector<std::string> kProcedures = {"ActionControl.Get",
                                                         "ActionDescriptor.GetObject",
                                                         "ActionDescriptor.GetUnitFloat",
                                                         "ActionReference.Make",
                                                         "ActionDescriptor.GetInteger",
                                                         "ActionReference.PutProperty",
                                                         "Basic.AcquireSuite",
                                                         "ActionDescriptor.GetEnumerated",
                                                         "ActionDescriptor.HasKey",
                                                         "ActionReference.PutEnumerated",
                                                         "Framework.Install"};
    static const std::vector<std::string> kTools = {"paintbrushTool", "lassoTool", "eraserTool"};
    static const std::vector<std::string> kClicks = {"down", "up", "moved", "dragged"};
    static const Json kWindow = {{"frame", {100, 50, 800, 622}}, {"content", {100, 50, 800, 600}}};
    switch (below(20)) {
      case 0:
        return add({{"active", below(2) == 0}});
      case 1:
        return add({{"window", below(3) == 0 ? Json(nullptr) : kWindow}});
      case 2:
        add({{"closeWindow", true}});
        return below(2) == 0 ? add({{"window", kWindow}}) : void();
      case 3:
        return add({{"toolbarPending", below(2) == 0}});
      case 4:
        return add({{"mouse", {below(1200), below(900)}}});
      case 5:
        return add({{"tool", kTools[static_cast<std::size_t>(below(3))]}});
      case 6:
        return add({{"brush", below(4) == 0 ? Json(nullptr) : Json(1 + below(100))}});
      case 7:
        return add({{"fail",
                     {{"procedure", kProcedures[random_() % kProcedures.size()]},
                      {"error", -1 - below(5)},
                      {"after", below(3)}}}});
      case 8:
        if (below(2) == 0) add({{"call", {"SP Interface", "Shutdown"}}});
        return add({{"call", {"SP Interface", "Startup"}}});
      case 9:
        return add({{"button", {below(4), below(2)}}});
      case 10:
        return add({{"message", {{"client", 77}, {"axes", {0, 500, 0, 0, 0, 0}}}}});
      case 11:
        return add({{"modifiers", below(0x10000)}});
      case 12:
      case 13:
        return add({{"click", kClicks[static_cast<std::size_t>(below(4))]}});
      default:
        return addMotion();
    }
  }

  std::mt19937 random_;
  RandomScenario scenario_;
};

}  // namespace

RandomScenario randomScenario(unsigned seed) { return Generator(seed).scenario(); }

std::string textOf(const RandomScenario& scenario) {
  std::string text = "{\"host\": " + scenario.host.dump() + ", \"steps\": [";
  for (std::size_t i = 0; i < scenario.steps.size(); ++i) {
    Json step = scenario.steps[i];
    step["at"] = i;
    text += (i == 0 ? "\n  " : ",\n  ") + step.dump();
  }
  return text + "\n]}\n";
}

}  // namespace testing_support
