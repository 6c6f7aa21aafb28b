// What `mrvsim live` loads: everything that needs the libraries for windows is in this module, so
// the other commands start without them.
#include <SDL.h>
#include <fmt/format.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>

#include "mrvsim/ExitStatus.h"
#include "mrvsim/LiveCommand.h"
#include "mrvsim/Output.h"
#include "mrvsim/PluginFile.h"
#include "mrvsim/live/Loop.h"
#include "simulator/loader/PluginModule.h"
#include "simulator/scenario/Interrupts.h"
#include "simulator/scenario/ScenarioReader.h"
#include "simulator/scenario/Wording.h"

namespace simulator::live {

namespace {

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

/// SDL's part of the process.
class Sdl {
 public:
  Sdl() {
    // Some systems without a screen let a program draw on the console; that is not meant here.
    const bool hasScreen = isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("SDL_VIDEODRIVER");
    if (!hasScreen) {
      throw std::runtime_error(
          "live: there is no display to open a window on; DISPLAY and WAYLAND_DISPLAY are not set");
    }
    // Otherwise SDL would go on to draw into memory if the display is not there.
    const char* const drivers = isSet("WAYLAND_DISPLAY") ? "wayland,x11" : "x11";
    if (!isSet("SDL_VIDEODRIVER")) SDL_SetHint(SDL_HINT_VIDEODRIVER, drivers);
    // Interrupts are noted already, and the device is also followed while another window is used.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    // What the processor has drawn goes to the screen as it is, not through OpenGL.
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    // Without a session bus, SDL's library for it would start one, which stays after the window.
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 0);
    SDL_SetMainReady();
    if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER) == 0) return;
    const char* const variable = isSet("DISPLAY") ? "DISPLAY" : "WAYLAND_DISPLAY";
    throw std::runtime_error(fmt::format(
        "live: no window can be opened on the display that {} names{}", variable,
        isSet(variable) ? fmt::format(", \"{}\"", printable(std::getenv(variable))) : ""));
  }
  ~Sdl() { SDL_Quit(); }
  Sdl(const Sdl&) = delete;
  Sdl& operator=(const Sdl&) = delete;
};

struct Play {
  Scenario setup = liveSetup();
  std::optional<std::vector<Step>> demo;
};

Play readScenario(const LiveOptions& options) {
  Play play;
  if (options.scenario.empty()) return play;
  const ScenarioFile scenario(options.scenario);
  for (const std::string& note : scenario.notes()) complain("note: " + note);
  play.setup = scenario.setup();
  if (options.demo) {
    play.demo.emplace();
    scenario.eachStep([&](const Step& step, const StepPlace&) { play.demo->push_back(step); });
  }
  return play;
}

int statusOf(const Seen& seen) {
  if (seen.breakdowns > 0) return kPluginBroke;
  return seen.misuses > 0 ? kMisused : kDone;
}

/// Runs the loop; afterwards the plug-in has been unloaded, also if an interrupt is passed on.
void run(const LiveOptions& options, Driver& driver, Window& window) {
  RealClock realClock;
  SteppedClock steppedClock;
  SystemEvents events;
  Clock& clock = options.frames > 0 ? static_cast<Clock&>(steppedClock) : realClock;
  driver.start(clock.now());
  try {
    runLoop(driver, window, clock, events, {options.frames, options.frames > 0});
  } catch (const Interrupted&) {
    // What was recorded is kept; a further interrupt gives it up.
    settleInterrupt();
    driver.finish();
    throw;
  }
  driver.finish();
}

/// What is written when the window is closed.
class Results {
 public:
  explicit Results(const LiveOptions& options, const std::vector<std::string>& inputs)
      : recording_(options.record, options.log, inputs) {
    if (!options.status.empty()) Output(options.status).expectNoneOf(inputs);
    if (options.screenshot.empty()) return;
    screenshot_.emplace(options.screenshot);
    screenshot_->expectNoneOf(inputs);
    screenshot_->open();
  }

  Recording& recording() { return recording_; }

  void commit(const Window& window) {
    if (screenshot_) screenshot_->write(window.picture());
    recording_.commit();
    if (screenshot_) screenshot_->commit();
  }

 private:
  Recording recording_;
  std::optional<Output> screenshot_;
};

int runWindow(const LiveOptions& options) {
  Play play = readScenario(options);
  const std::string plugin =
      options.plugin.empty() ? besideProgram("MrvPhotoshop.so") : options.plugin;
  expectPluginFile(plugin);
  const std::filesystem::path mapsFile = axisMapsFile();
  const AxisMaps maps = mapsFile.empty() ? AxisMaps() : AxisMaps::load(mapsFile);
  std::vector<std::string> inputs = {plugin};
  if (!options.scenario.empty()) inputs.push_back(options.scenario);
  Results results(options, inputs);
  // Before SDL has threads.
  Session session({plugin, besideProgram("libMoravinClient.so")}, options.timeout);
  const Sdl sdl;
  StatusLines status(options.status);
  Driver driver(session, results.recording(), std::move(play.setup), std::move(play.demo),
                options.frames == 0);
  Window window(driver, status, maps, mapsFile);
  try {
    run(options, driver, window);
  } catch (const Interrupted&) {
    results.commit(window);
    throw;
  }
  results.commit(window);
  if (driver.seen().breakdowns > 0) complain(driver.seen().lastBreakdown);
  return statusOf(driver.seen());
}

}  // namespace

}  // namespace simulator::live

extern "C" int mrvLive(const simulator::LiveOptions* options) {
  return simulator::live::runWindow(*options);
}
