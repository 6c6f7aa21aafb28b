// A whole run of the plug-in, once for each call in it that can fail: the calls of the host, those
// of the platform, those that open and read a file, and the plug-in's requests for memory. Each run
// is a process of its own.
#include <MoravinClient/MoravinClient.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/host/Host.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/EventManager.h"
#include "simulator/scenario/OutputCapture.h"
#include "simulator/scenario/Player.h"
#include "tests/simulator/scenario/LibraryFaults.h"

/// Asked by the leak checker, which takes a good part of a run. The simulator's objects are counted
/// in any case.
extern "C" int __lsan_is_turned_off() { return MRV_LONG_TESTS ? 0 : 1; }

namespace {

using namespace simulator;
using testing_support::kLibraryCalls;
using testing_support::libraryFaults;

constexpr const char* kKeyDown = "a key is down";
constexpr const char* kClickHeldBack = "a click is held back";
constexpr const char* kDeaf = "the plug-in does not act after another start-up";

/// When the failures happen. They end with the phase.
enum class Phase { kStart, kMotion, kEnd };

/// One run: the call of `procedure` with the index `after` in the phase fails; a lasting failure
/// takes in every call after it.
struct FailingRun {
  std::string procedure;
  Phase phase;
  bool lasting;
  std::uint64_t after;
};

std::string describe(const FailingRun& run) {
  constexpr std::array kPhases = {"start-up", "motion", "shut-down"};
  return std::string(run.lasting ? "from call " : "call ") + std::to_string(run.after) + " of " +
         run.procedure + " in the " + kPhases[static_cast<std::size_t>(run.phase)];
}

/// How often each procedure was called.
using Calls = std::map<std::string, std::uint64_t>;

/// What came of a run.
struct Outcome {
  bool fired = false;
  bool isDeaf = false;              ///< only another start-up made the plug-in act again
  std::vector<std::string> faults;  ///< what it left behind
  Calls calls;                      ///< of the phase, without those of the libraries
};

/// What the log says of the keys, and of what came of the samples.
struct Effects {
  std::set<std::string> keysDown;
  int ticks = 0;
  int typed = 0;
  bool clickPassed = false;
  std::vector<std::string> misuses;

  void take(const LogLine& line) {
    const std::string_view what = line.what();
    if (what == "wheel") ++ticks;
    if (what == "click") clickPassed = line.has("\"passed\":true");
    if (what == "key") press("at the tap " + line.json()["key"].dump(), line.json()["down"]);
    if (what == "posted" && line.has("\"class\":\"keyb\"")) {
      const bool down = line.json()["kind"] == kEventRawKeyDown;
      typed += down ? 1 : 0;
      press("in the queue", down);
    }
    if (what == "misuse") misuses.push_back(line.json()["text"]);
  }

  void press(const std::string& key, bool down) {
    down ? (void)keysDown.insert(key) : (void)keysDown.erase(key);
  }
};

class WholeRun {
 public:
  explicit WholeRun(const TemporaryHome& home) : player_(scenario(), home) {
    theLog().setSink([this](const LogLine& line) { effects_.take(line); });
  }

  Outcome play(const FailingRun& run) {
    player_.load(MODULE, FRAMEWORK);
    during(run, Phase::kStart, [this] { call("Startup"); });
    during(run, Phase::kMotion, [this] { motion(); });
    if (run.phase != Phase::kEnd) recover();
    during(run, Phase::kEnd, [this] { call("Shutdown"); });
    if (run.phase == Phase::kEnd) {
      restart();
      call("Shutdown");
    }
    player_.unload();
    judgeTheEnd();
    return outcome_;
  }

 private:
  static const Scenario& scenario() {
    static const Scenario scenario = [] {
      Scenario made;
      // A pan then needs both modifiers.
      made.host.zoomWithScrollWheel = true;
      made.host.redrawDelay = 5.0;
      return made;
    }();
    return scenario;
  }

  template <class Part>
  void during(const FailingRun& run, Phase phase, Part part) {
    if (run.phase == phase) arm(run);
    part();
    if (run.phase != phase) return;
    outcome_.fired = theFaults().fired() + libraryFaults().fired > 0;
    outcome_.calls = theFaults().calls();
    require(phase != Phase::kMotion || effects_.clickPassed, kClickHeldBack);
    theFaults().clear();
    libraryFaults() = {};
  }

  void require(bool holds, const std::string& fault) {
    if (!holds) outcome_.faults.push_back(fault);
  }

  static void arm(const FailingRun& run) {
    constexpr std::int32_t kError = -4960;
    constexpr std::uint64_t kForGood = std::uint64_t{1} << 40;
    const std::uint64_t times = run.lasting ? kForGood : 1;
    if (kLibraryCalls.contains(run.procedure)) {
      libraryFaults() = {.call = run.procedure, .after = run.after, .times = times};
    } else {
      theFaults().add({run.procedure, kError, run.after, times});
    }
  }

  void take(StepAction action) { player_.take({at_ += 20, std::move(action)}); }
  void call(const char* selector) { take(CallStep{"SP Interface", selector}); }
  void click() {
    take(ClickStep{Click::kDown});
    const bool down = effects_.clickPassed;
    take(ClickStep{Click::kUp});
    effects_.clickPassed = down && effects_.clickPassed;
  }
  void message(std::uint16_t command, std::array<std::int16_t, 6> axes) {
    take(MessageStep{{.type = kMoravinMessageDeviceState,
                      .client = std::nullopt,
                      .command = command,
                      .value = 1,
                      .axes = axes,
                      .button = 1}});
  }
  void sample(std::array<std::int16_t, 6> axes) { message(kMoravinCommandAxes, axes); }
  void push() { sample({0, 60, 0, 0, 0, 0}); }
  void pan(std::int16_t x, std::int16_t y) { sample({x, 0, y, 0, 0, 0}); }
  void twist(std::int16_t counts) { sample({0, 0, 0, 0, counts, 0}); }
  void rest() { sample({0, 0, 0, 0, 0, 0}); }

  /// A push, pans, twists with two tools, the other messages, and the host in the background.
  void motion() {
    push();
    pan(60, 0);
    click();
    pan(0, -60);
    rest();
    click();
    twist(600);
    take(ToolStep{"eraserTool"});
    push();
    twist(-600);
    message(kMoravinCommandButtons, {});
    message(kMoravinCommandApplication, {});
    take(CallStep{"Photoshop", "Do It"});
    pan(0, 60);
    take(ActiveStep{false});
    push();
    take(ActiveStep{true});
    pan(-60, 0);
    rest();
    click();
  }

  /// The motion after the failure: a tick must come of the first 52 pushes, a key of two twists.
  bool acts() {
    const int ticks = effects_.ticks;
    const int typed = effects_.typed;
    for (int i = 0; i < 52 && effects_.ticks == ticks; ++i) push();
    rest();
    twist(600);
    twist(600);
    rest();
    return effects_.ticks > ticks && effects_.typed > typed;
  }

  /// Before anything else moves the view: a later tick would release the same keys.
  void recover() {
    rest();
    require(effects_.keysDown.empty(), kKeyDown);
    if (!acts()) restart();
    pan(60, 0);
    rest();
    click();
    require(effects_.clickPassed, "a click is held back after the recovery");
  }

  void restart() {
    outcome_.isDeaf = true;
    call("Shutdown");
    call("Startup");
    require(acts(), kDeaf);
  }

  void judgeTheEnd() {
    theLog().setSink({});
    for (const std::string& misuse : effects_.misuses) require(false, misuse);
    require(theEventManager().live() == 0, "an event is leaked");
    require(theCFObjects().live() == 0, "an object of the platform is leaked");
    require(theHost().suitesHeld() == 0, "a suite is held");
  }

  Player player_;
  Effects effects_;
  Outcome outcome_;
  std::int64_t at_ = 0;
};

void writeOutcome(int file, const Outcome& outcome) {
  const std::string text = Json{
      {"fired", outcome.fired},
      {"isDeaf", outcome.isDeaf},
      {"faults", outcome.faults},
      {"calls", outcome.calls}}.dump();
  if (write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) _exit(1);
}

std::string readAll(int file) {
  std::string text;
  std::array<char, 4096> part;
  for (ssize_t size = 0; (size = read(file, part.data(), part.size())) > 0;) {
    text.append(part.data(), static_cast<std::size_t>(size));
  }
  return text;
}

/// Plays the run in a process of its own. One that crashes or lets an exception out is a fault.
Outcome outcomeOf(const FailingRun& run, const TemporaryHome& home) {
  std::array<int, 2> ends;
  if (pipe(ends.data()) != 0) return {.faults = {"no pipe"}, .calls = {}};
  const pid_t child = fork();
  if (child == 0) {
    OutputCapture capture;
    const Outcome outcome = WholeRun(home).play(run);
    capture.finish([](const std::string&) {});
    writeOutcome(ends[1], outcome);
    _exit(0);
  }
  close(ends[1]);
  const Json outcome = Json::parse(readAll(ends[0]), nullptr, false);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0 || outcome.is_discarded()) {
    return {.faults = {"the process did not live"}, .calls = {}};
  }
  return {outcome["fired"], outcome["isDeaf"], outcome["faults"], outcome["calls"]};
}

/// The index after `n`. Without the long tests, calls late in a run are left out more and more.
std::uint64_t next(std::uint64_t n) { return MRV_LONG_TESTS || n == 0 ? n + 1 : n * 8; }

using Names = std::set<std::string>;

class Failures : public testing::Test {
 protected:
  /// The calls in the phase of a run in which nothing fails.
  Calls callsIn(Phase phase) {
    const Outcome outcome = outcomeOf({"none", phase, false, 0}, home_);
    EXPECT_FALSE(outcome.fired);
    EXPECT_FALSE(outcome.isDeaf && phase != Phase::kEnd);
    EXPECT_EQ(outcome.faults, std::vector<std::string>());
    return outcome.calls;
  }

  /// Lets each call of the procedure fail in the phase, alone and with all after it. See `next` for
  /// the calls that the short tests leave out.
  void failEach(const std::string& procedure, Phase phase, std::uint64_t calls) {
    for (std::uint64_t n = 0; n < calls; n = next(n)) {
      EXPECT_TRUE(fails({procedure, phase, false, n}));
      if (MRV_LONG_TESTS || n != 1) {
        EXPECT_TRUE(fails({procedure, phase, true, n}));
      }
    }
    if (MRV_LONG_TESTS) {
      EXPECT_FALSE(fails({procedure, phase, false, calls}));
    }
  }

  /// The same for a procedure whose calls are not known, until a run in which none is left to fail.
  void failEach(const std::string& procedure, Phase phase) {
    for (std::uint64_t n = 0; fails({procedure, phase, false, n}); n = next(n)) {
      EXPECT_TRUE(fails({procedure, phase, true, n}));
    }
  }

  void failEachOf(const std::function<bool(const std::string&)>& wanted) {
    for (const Phase phase : {Phase::kStart, Phase::kMotion, Phase::kEnd}) {
      for (const auto& [procedure, calls] : callsIn(phase)) {
        if (wanted(procedure)) failEach(procedure, phase, calls);
      }
    }
  }

  /// The failures, in the tests that leave some out and in those that take long.
  void expectCount(int usual, int withAll) {
    std::printf("%d failures, %d tolerated\n", count_, tolerated_);
    EXPECT_EQ(count_, MRV_LONG_TESTS ? withAll : usual);
  }

  int count_ = 0;
  Calls counts_;  ///< the same for each procedure
  int tolerated_ = 0;
  Names called_;
  Names deaf_;  ///< of those, the ones of which a failure lasted until another start-up

 private:
  bool fails(const FailingRun& run) {
    const Outcome outcome = outcomeOf(run, home_);
    EXPECT_EQ(withoutTolerated(outcome.faults, run), expectedFaults(run)) << describe(run);
    if (!outcome.fired) return false;
    ++count_;
    ++counts_[run.procedure];
    called_.insert(run.procedure);
    if (run.phase == Phase::kEnd || !outcome.isDeaf) return true;
    deaf_.insert(run.procedure);
    EXPECT_EQ(run.phase, Phase::kStart) << describe(run);
    return true;
  }

  /// The faults of a run without those that the plug-in leaves, because it looks at no result of
  /// the calls that create, post and install: the rest of the device, or the release of a key, is
  /// then lost, and the receiver of the device's events is installed once in the process.
  std::vector<std::string> withoutTolerated(std::vector<std::string> faults,
                                            const FailingRun& run) {
    static const std::map<std::string, Names> kTolerated = {
        {"Mac.CGEventCreateKeyboardEvent", {kKeyDown}},
        {"Mac.CreateEvent", {kKeyDown, kClickHeldBack}},
        {"Mac.PostEventToQueue", {kKeyDown, kClickHeldBack}},
        {"Mac.GetEventDispatcherTarget", {kDeaf}},
        {"Mac.InstallEventHandler", {kDeaf}}};
    const auto tolerated = kTolerated.find(run.procedure);
    if (tolerated == kTolerated.end()) return faults;
    const auto removed = std::erase_if(
        faults, [&](const std::string& fault) { return tolerated->second.contains(fault); });
    if (removed > 0) ++tolerated_;
    return faults;
  }

  /// An object can be freed only through its suite, so it leaks while the suite is refused.
  static std::vector<std::string> expectedFaults(const FailingRun& run) {
    const bool isRefusedForGood = run.procedure == "Basic.AcquireSuite" && run.lasting &&
                                  run.phase == Phase::kStart && run.after == 2;
    if (!isRefusedForGood) return {};
    return {"leaked: descriptor 1, made by ActionControl.Get"};
  }

  TemporaryHome home_;
};

bool isOfThePlatform(const std::string& procedure) { return procedure.starts_with("Mac."); }

TEST_F(Failures, OfTheHostLeaveNothingBehind) {
  failEachOf([](const std::string& procedure) { return !isOfThePlatform(procedure); });
  EXPECT_EQ(deaf_, (Names{"Basic.AcquireSuite", "Framework.Install"}));
  EXPECT_EQ(called_,
            (Names{"ActionControl.Get", "ActionControl.TypeIDToStringID", "ActionDescriptor.Free",
                   "ActionDescriptor.GetEnumerated", "ActionDescriptor.GetInteger",
                   "ActionDescriptor.GetObject", "ActionDescriptor.GetUnitFloat",
                   "ActionDescriptor.HasKey", "ActionReference.Free", "ActionReference.Make",
                   "ActionReference.PutEnumerated", "ActionReference.PutProperty",
                   "Basic.AcquireSuite", "Basic.ReleaseSuite", "Framework.Install"}));
  expectCount(62, 126);
  EXPECT_EQ(tolerated_, 0);
}

TEST_F(Failures, OfThePlatformLeaveNothingBehind) {
  failEachOf(isOfThePlatform);
  EXPECT_EQ(deaf_,
            (Names{"Mac.GetEventDispatcherTarget", "Mac.GetMainEventQueue",
                   "Mac.InstallEventHandler", "Mac.MPCreateTask", "Mac.RunCurrentEventLoop"}));
  EXPECT_EQ(called_, (Names{"Mac.CFStringGetCString",
                            "Mac.CFURLCopyFileSystemPath",
                            "Mac.CFURLCreateFromFSRef",
                            "Mac.CGEventCreateKeyboardEvent",
                            "Mac.CGEventCreateScrollWheelEvent",
                            "Mac.CGRegisterScreenRefreshCallback",
                            "Mac.CGSetLocalEventsSuppressionInterval",
                            "Mac.CreateEvent",
                            "Mac.FSFindFolder",
                            "Mac.GetEventDispatcherTarget",
                            "Mac.GetEventParameter",
                            "Mac.GetMainEventQueue",
                            "Mac.InstallEventHandler",
                            "Mac.MPCreateTask",
                            "Mac.PostEventToQueue",
                            "Mac.RemoveEventHandler",
                            "Mac.RunCurrentEventLoop",
                            "Mac.SetEventParameter",
                            "Mac.TISCopyCurrentKeyboardInputSource",
                            "Mac.TISGetInputSourceProperty",
                            "Mac.contentView",
                            "Mac.mainWindow",
                            "Mac.screen"}));
  expectCount(94, 620);
  EXPECT_EQ(tolerated_, MRV_LONG_TESTS ? 30 : 4);
}

TEST_F(Failures, OfMemoryAndFilesLeaveNothingBehind) {
  for (const std::string& call : kLibraryCalls) {
    for (const Phase phase : {Phase::kStart, Phase::kMotion, Phase::kEnd}) failEach(call, phase);
  }
  EXPECT_EQ(deaf_, Names{"operator new"});
  EXPECT_EQ(called_, kLibraryCalls);
  // The preferences and the shortcuts are each one file, of two reads.
  const Calls ofFiles = {{"fclose", 4}, {"fopen", 4}, {"fread", 8}, {"fseek", 2}};
  for (const auto& [call, count] : ofFiles) EXPECT_EQ(counts_[call], count) << call;
  // Compilers differ in how often they ask for memory.
  std::printf("%d failures\n", count_);
  EXPECT_GE(count_, 16);
}

}  // namespace
