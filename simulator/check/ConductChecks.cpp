// Checks on a plug-in's behaviour while a simulated host and device use it.
#include <Carbon/Carbon.h>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sys/resource.h>

#include <algorithm>
#include <exception>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "platform/host/SPErrorCodes.h"
#include "simulator/check/Check.h"
#include "simulator/check/Session.h"
#include "simulator/loader/PluginModule.h"

namespace simulator {

namespace {

constexpr auto kParameterError = static_cast<std::uint32_t>(kSPBadParameterError);
constexpr std::string_view kLeaked = "leaked";
constexpr std::string_view kOtherThread = "another thread";
constexpr double kLongestLoad = 0.1;
constexpr int kManyAcquisitions = 1000;

std::string steps(const std::string& list) { return R"({"steps": [)" + list + "]}"; }

Session playDay(const std::string& plugin) { return playSession(plugin, steps(kWholeDay)); }

Verdict allZero(const Session& session) {
  const std::vector<std::uint32_t> results = session.results();
  const bool good = std::all_of(results.begin(), results.end(), [](auto r) { return r == 0; });
  return good ? passed() : failed(fmt::format("the calls returned {}", results));
}

// How often the plug-in called the framework for `what`.
std::ptrdiff_t asked(const Session& session, const char* what) {
  const std::vector<Json> lines = session.of("framework");
  return std::count_if(lines.begin(), lines.end(),
                       [&](const Json& line) { return line["do"] == what; });
}

Verdict counts(const Session& session, std::ptrdiff_t registered, std::ptrdiff_t unregistered) {
  if (asked(session, "register") == registered && asked(session, "unregister") == unregistered) {
    return allZero(session);
  }
  return failed(fmt::format("registered {} times and unregistered {} times with the framework",
                            asked(session, "register"), asked(session, "unregister")));
}

Verdict startAndStop(const std::string& plugin) {
  return counts(playSession(plugin, steps(R"({"call": ["SP Interface", "Startup"]},
                                             {"call": ["SP Interface", "Shutdown"]})")),
                1, 1);
}

// The second shut-down has nothing to unregister.
Verdict startTwice(const std::string& plugin) {
  return counts(playSession(plugin, steps(R"({"call": ["SP Interface", "Startup"]},
                                             {"call": ["SP Interface", "Startup"]},
                                             {"call": ["SP Interface", "Shutdown"]},
                                             {"call": ["SP Interface", "Shutdown"]})")),
                1, 1);
}

Verdict withoutFramework(const std::string& plugin) {
  const Session session =
      playSession(plugin, R"({"framework": false, "steps": [{"call": ["SP Interface", "Startup"]},
                                                {"call": ["SP Interface", "Shutdown"]}]})");
  if (!session.of("thread").empty()) return failed("starts a thread without the framework");
  return allZero(session);
}

Verdict unknownCalls(const std::string& plugin) {
  const Session session = playSession(plugin, steps(R"({"call": ["Somebody", "Startup"]},
                                                       {"call": ["SP Interface", "Something"]},
                                                       {"call": ["PS Photoshop", "Startup"]},
                                                       {"call": ["SP Interface", "Do It"]},
                                                       {"call": ["", ""]})"));
  for (const Json& line : session.lines) {
    if (line["what"] != "result") return failed("an unknown call led to " + line.dump());
  }
  return allZero(session);
}

// Fails if a suite is still held when the last call, the shut-down, returns.
Verdict suitesReleased(const std::string& plugin) {
  const Session session = playDay(plugin);
  std::map<std::pair<std::string, int>, int> held;
  std::map<std::pair<std::string, int>, int> heldAtResult;
  for (const Json& line : session.lines) {
    if (line["what"] == "result") heldAtResult = held;
    if (line["what"] != "suite" || line["result"] != 0) continue;
    held[{line["name"], line["version"]}] += line["do"] == "acquire" ? 1 : -1;
  }
  for (const auto& [suite, count] : heldAtResult) {
    if (count == 0) continue;
    return failed(
        fmt::format("holds \"{}\" version {} after shut-down", suite.first, suite.second));
  }
  return passed();
}

template <class Predicate>
Verdict noMisuse(const std::string& plugin, Predicate concerns) {
  for (const std::string& text : playDay(plugin).misuses()) {
    if (concerns(text)) return failed(text);
  }
  return passed();
}

bool isLeak(const std::string& text) { return text.starts_with(kLeaked); }
bool isOtherThread(const std::string& text) { return text.find(kOtherThread) != std::string::npos; }

Verdict objectsFreed(const std::string& plugin) { return noMisuse(plugin, isLeak); }
Verdict deviceThread(const std::string& plugin) { return noMisuse(plugin, isOtherThread); }

Verdict handlesRespected(const std::string& plugin) {
  return noMisuse(plugin,
                  [](const std::string& text) { return !isLeak(text) && !isOtherThread(text); });
}

struct KeyChange {
  int key;
  bool down;
};

// The keys that are down when the last call, the shut-down, returns, and those that are down after
// the unloading.
template <class ChangeOf>
std::set<int> leftDown(const Session& session, ChangeOf changeOf) {
  std::set<int> down;
  std::set<int> downAtResult;
  for (const Json& line : session.lines) {
    if (line["what"] == "result") downAtResult = down;
    const std::optional<KeyChange> change = changeOf(line);
    if (!change) continue;
    change->down ? void(down.insert(change->key)) : void(down.erase(change->key));
  }
  down.merge(downAtResult);
  return down;
}

std::string nameOfKey(int key) {
  static const std::map<int, const char*> kModifiers = {
      {54, "command"}, {55, "command"}, {56, "shift"},  {57, "caps lock"}, {58, "option"},
      {59, "control"}, {60, "shift"},   {61, "option"}, {62, "control"},   {63, "function"}};
  const auto modifier = kModifiers.find(key);
  return modifier == kModifiers.end() ? fmt::format("key {}", key)
                                      : fmt::format("the {} key ({})", modifier->second, key);
}

Verdict noneOf(const std::set<int>& down) {
  if (down.empty()) return passed();
  std::vector<std::string> names;
  for (const int key : down) names.push_back(nameOfKey(key));
  return failed("left down: " + fmt::format("{}", fmt::join(names, ", ")));
}

Verdict keysReleased(const std::string& plugin) {
  return noneOf(leftDown(playDay(plugin), [](const Json& line) -> std::optional<KeyChange> {
    if (line["what"] != "key") return {};
    return KeyChange{line["key"], line["down"]};
  }));
}

// The key code is the parameter 'kcod' of a keyboard event; -1 if it has none.
int keyCodeOf(const Json& posted) {
  for (const Json& parameter : posted["parameters"]) {
    if (parameter[0] == "kcod") return parameter[2];
  }
  return -1;
}

Verdict typedKeysReleased(const std::string& plugin) {
  return noneOf(leftDown(playDay(plugin), [](const Json& line) -> std::optional<KeyChange> {
    if (line["what"] != "posted" || line["class"] != "keyb") return {};
    if (line["kind"] != kEventRawKeyDown && line["kind"] != kEventRawKeyUp) return {};
    return KeyChange{keyCodeOf(line), line["kind"] == kEventRawKeyDown};
  }));
}

// Playing throws if anything ends the day early.
Verdict wholeDay(const std::string& plugin) {
  playDay(plugin);
  return passed();
}

struct Refusal {
  int after = 0;         // acquisitions granted before the first refusal
  bool forGood = false;  // refuses all further acquisitions, not just one
};

std::string stepOf(const Refusal& refusal) {
  return fmt::format(
      R"({{"fail": {{"procedure": "Basic.AcquireSuite", "error": -3, "after": {}, "times": {}}}}},)",
      refusal.after, refusal.forGood ? 1000000 : 1);
}

Verdict judgeRefusal(const Session& session, const Refusal& refusal) {
  for (const std::uint32_t result : session.results()) {
    if (result != 0 && result != kParameterError) return failed(fmt::format("returned {}", result));
  }
  for (const std::string& text : session.misuses()) {
    // A plug-in cannot free an object if the suite that frees it is refused for good.
    if (!(refusal.forGood && isLeak(text))) return failed(text);
  }
  return passed();
}

// Plays the day; sets `fired` to whether an acquisition was refused.
Verdict playRefusing(const std::string& plugin, const Refusal& refusal, bool& fired) try {
  const Session session = playSession(plugin, steps(stepOf(refusal) + kWholeDay));
  fired = session.faultsFired;
  return judgeRefusal(session, refusal);
} catch (const std::exception& error) {
  return failed(error.what());
}

// Plays the day once for each acquisition, refusing that one, until a day has none left to refuse.
Verdict refuseInTurn(const std::string& plugin, bool forGood) {
  for (int n = 0; n < kManyAcquisitions; ++n) {
    bool fired = false;
    const Verdict verdict = playRefusing(plugin, {n, forGood}, fired);
    if (verdict.outcome == Outcome::kFailed) {
      return failed(fmt::format("with acquisition {} refused: {}", n + 1, verdict.reason));
    }
    if (!fired) return passed();
  }
  return failed("asks for suites without end");
}

Verdict hostileHost(const std::string& plugin) {
  const Verdict once = refuseInTurn(plugin, false);
  return once.outcome == Outcome::kPassed ? refuseInTurn(plugin, true) : once;
}

double processorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

Verdict loadTime(const std::string& plugin) {
  const double before = processorSeconds();
  const auto module = loadPlugin(plugin);
  const double taken = processorSeconds() - before;
  return taken < kLongestLoad ? passed()
                              : failed(fmt::format("takes {:.2f} s of processor time", taken));
}

}  // namespace

std::vector<Check> conductChecks() {
  return {
      {"whole-day", "Nothing that a host and a device do makes it crash or lets an exception out.",
       wholeDay},
      {"start-and-stop", "A start-up registers one client and a shut-down takes it back.",
       startAndStop},
      {"start-twice", "Two start-ups make one connection, and two shut-downs take it back once.",
       startTwice},
      {"without-framework", "Without the device framework no thread is started, and all is well.",
       withoutFramework},
      {"unknown-calls", "Unknown callers and selectors get 0 and lead to nothing.", unknownCalls},
      {"suites-released", "After the shut-down no suite of the host is held.", suitesReleased},
      {"objects-freed", "Nothing that the host or the system made for the plug-in is left over.",
       objectsFreed},
      {"handles-respected", "Nothing is freed twice or used after it was freed.", handlesRespected},
      {"device-thread", "No suite of the host is touched on the device thread.", deviceThread},
      {"keys-released",
       "Every synthesized key or modifier is up again when the shut-down returns, and stays up.",
       keysReleased},
      {"typed-keys", "Every key whose press is posted as an event is released likewise.",
       typedKeysReleased},
      {"hostile-host", "Whichever suite the host refuses, every call returns 0 or 'Parm'.",
       hostileHost},
      {"load-time", "Loading takes less than a tenth of a second of processor time.", loadTime},
  };
}

}  // namespace simulator
