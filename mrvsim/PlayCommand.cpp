#include "mrvsim/PlayCommand.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>

#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "mrvsim/PluginFailure.h"
#include "mrvsim/PluginFile.h"
#include "mrvsim/ProgressBar.h"
#include "mrvsim/report/Report.h"
#include "simulator/base/Log.h"
#include "simulator/loader/PluginModule.h"
#include "simulator/macos/RunLoops.h"
#include "simulator/scenario/LogText.h"
#include "simulator/scenario/OutputCapture.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/ScenarioReader.h"
#include "simulator/scenario/Summary.h"
#include "simulator/scenario/WatchedProcess.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

// The messages from the process that plays.
constexpr char kLoaded = 'l';
constexpr char kLogLine = 'L';
constexpr char kTextLine = 'T';  ///< the same for people
constexpr char kSummary = 'S';
constexpr char kLostMotion = 'M';
constexpr char kPluginMisused = 'u';
constexpr char kCannotPlay = 'E';  ///< the reason
constexpr char kBroke = 'B';       ///< what the plug-in did that ends the play

/// Whether people want colour in what is printed.
bool isColourWanted() {
  const char* const refused = std::getenv("NO_COLOR");
  if (refused != nullptr && *refused != '\0') return false;
  const char* const terminal = std::getenv("TERM");
  const bool isDumb = terminal == nullptr || std::string_view(terminal) == "dumb";
  return !isDumb && isatty(STDOUT_FILENO) == 1;
}

/// The forms in which the process that plays sends each line of the log.
struct LogForms {
  bool json = false;
  bool text = false;
  bool isColoured = false;  ///< the text
};

/// Keeps this process and the threads that it starts on one processor. The main thread waits for
/// the device's thread after every sample; to wake a thread on another processor takes several
/// times as long as to switch to it. If the system refuses, playing takes longer.
void stayOnThisProcessor() {
  const int processor = sched_getcpu();
  if (processor < 0 || processor >= CPU_SETSIZE) return;
  cpu_set_t only;
  CPU_ZERO(&only);
  CPU_SET(processor, &only);
  sched_setaffinity(0, sizeof only, &only);
}

/// Plays one scenario in the process that may crash.
class Performance {
 public:
  Performance(const ScenarioFile& scenario, const TemporaryHome& home, const std::string& plugin,
              LogForms forms, Channel& channel)
      : scenario_(scenario),
        home_(home),
        plugin_(plugin),
        forms_(forms),
        channel_(channel),
        summary_(scenario.setup().host.brush),
        player_(scenario.setup(), home, &summary_) {}

  /// Sends everything that happens; does not throw.
  void perform() {
    try {
      load();
      scenario_.eachStep([this](const Step& step, const StepPlace& place) { take(step, place); });
      unload();
    } catch (const PluginBroke& broke) {
      finishLog();
      channel_.send(kBroke, broke.what);
    } catch (const std::exception& error) {
      // Reading the scenario fails if the plug-in has closed everything that was open.
      const bool closed = fcntl(STDIN_FILENO, F_GETFD) < 0;
      closed ? channel_.send(kBroke, "closed the files of its host")
             : channel_.send(kCannotPlay, error.what());
    }
  }

 private:
  struct PluginBroke {
    std::string what;
  };

  void load() {
    stayOnThisProcessor();
    leaveRestartableSequences();
    theLog().setSink([this](const LogLine& line) { logged(line); });
    theLog().setPrelude([this] { capture_.drain([this](const auto& text) { printed(text); }); });
    watchModule(std::filesystem::absolute(plugin_).string());
    channel_.reach({.phase = Milestone::kLoading});
    player_.load(plugin_, besideProgram("libMoravinClient.so"));
    channel_.send(kLoaded, "");
  }

  void take(const Step& step, const StepPlace& place) {
    Milestone milestone = {Milestone::kPlaying, place.index, place.position.line,
                           place.position.column};
    place.kind.copy(milestone.kind, sizeof milestone.kind - 1);
    channel_.reach(milestone);
    guarded([&] { player_.take(step); });
  }

  void unload() {
    channel_.reach({.phase = Milestone::kUnloading});
    guarded([&] { player_.unload(); });
    capture_.finish([this](const auto& text) { printed(text); });
    finishLog();
    summary_.lostMotion(player_.lostMotion());
    channel_.send(kSummary, summary_.text());
    channel_.send(kLostMotion, player_.lostMotion());
    if (theLog().misuses() > 0) channel_.send(kPluginMisused, "");
  }

  /// Distinguishes what the plug-in throws from what this program throws.
  template <class Call>
  void guarded(Call call) {
    try {
      call();
    } catch (...) {
      throw PluginBroke{
          fmt::format("threw {} through its entry point or a handler", describeException())};
    }
  }

  void finishLog() {
    theLog().setPrelude({});
    theLog().setSink({});
  }

  void logged(const LogLine& line) {
    summary_.line(line);
    if (forms_.text) channel_.send(kTextLine, logText(line, forms_.isColoured));
    if (!forms_.json) return;
    logLine_.clear();
    line.appendTo(logLine_);
    logLine_ += '\n';
    channel_.send(kLogLine, logLine_);
  }

  void printed(const std::string& text) {
    theLog().write("printed", {{"text", withHomeAsTilde(text, home_.path().string())}});
  }

  const ScenarioFile& scenario_;
  const TemporaryHome& home_;
  const std::string& plugin_;
  LogForms forms_;
  std::string logLine_;
  Channel& channel_;
  OutputCapture capture_;
  Summary summary_;
  Player player_;
};

/// Plays in a child process and writes the outputs.
class Play {
 public:
  explicit Play(const PlayOptions& options)
      : options_(options),
        plugin_(options.plugin.empty() ? besideProgram("MrvPhotoshop.so") : options.plugin),
        forms_{!options.log.empty() || !options.report.empty(), options.text, isColourWanted()} {
    expectUnmixed();
    if (!options.log.empty()) log_.emplace(options.log);
    if (!options.report.empty()) reportFile_.emplace(options.report);
    if (options.summary || options.text) printed_.emplace("-");
    readInputs();
    std::vector<std::string> inputs = options.scenarios;
    inputs.push_back(plugin_);
    if (log_) log_->expectNoneOf(inputs);
    if (reportFile_) reportFile_->expectNoneOf(inputs);
    if (printed_) printed_->expectNoneOf(inputs);
    if (log_ && reportFile_) reportFile_->expectOtherThan(*log_);
  }

  int run() {
    for (const auto& scenario : scenarios_) play(*scenario);
    openOutputs();
    // Nothing that can still be taken back is done before all that can fail.
    if (log_) log_->prepare();
    if (reportFile_) {
      report_.write([this](std::string_view text) { reportFile_->write(text); });
      reportFile_->prepare();
    }
    if (printed_) {
      if (options_.text && options_.summary) printed_->write("\n");
      printed_->write(summaries_);
      printed_->commit();
    }
    if (log_) log_->commit();
    if (reportFile_) reportFile_->commit();
    if (!whatBroke_.empty()) complain(whatBroke_);
    return status_;
  }

 private:
  /// Throws if outputs would mix on standard output.
  void expectUnmixed() const {
    if (options_.log == "-" && options_.text) {
      throw std::runtime_error(
          "--log - and --text would mix on standard output; name a file with --log");
    }
    const char* const other = options_.log == "-" ? "--log -"
                              : options_.text     ? "--text"
                              : options_.summary  ? "--summary"
                                                  : nullptr;
    if (options_.report == "-" && other != nullptr) {
      throw std::runtime_error(fmt::format(
          "--report - and {} would mix on standard output; name a file with --report", other));
    }
  }

  void readInputs() {
    if (std::count(options_.scenarios.begin(), options_.scenarios.end(), "-") > 1) {
      throw std::runtime_error("standard input can be read only once");
    }
    for (const std::string& file : options_.scenarios) {
      scenarios_.push_back(std::make_unique<ScenarioFile>(file));
    }
    expectPluginFile(plugin_);
  }

  void play(const ScenarioFile& scenario) {
    if (status_ == kPluginBroke) return;
    const TemporaryHome home;
    failure_.clear();
    isLoaded_ = false;
    if (options_.text && scenarios_.size() > 1) earlyText_ = scenario.name() + ":\n";
    WatchedProcess process([&](Channel& channel) { perform(scenario, home, channel); },
                           options_.timeout);
    progress_.emplace(scenario.name(), scenario.steps(), isProgressWanted());
    const ProcessEnd end =
        process.watch([&](char kind, std::string_view text) { receive(scenario, kind, text); },
                      [&](const Milestone& milestone) { progress_->update(milestone.step); });
    progress_.reset();
    if (!failure_.empty()) {
      pluginBroke(scenario, end, failure_);
    } else if (end.how != ProcessEnd::kFinished) {
      pluginBroke(scenario, end, end.text(options_.timeout) + functionOf(end));
    }
  }

  void note(const std::string& text) {
    progress_->clear();
    complain("note: " + text);
  }

  /// It would mix with what is printed to the same terminal meanwhile.
  bool isProgressWanted() const {
    const bool prints = options_.text || options_.log == "-";
    return !options_.quiet && !(prints && isatty(STDOUT_FILENO) != 0);
  }

  void perform(const ScenarioFile& scenario, const TemporaryHome& home, Channel& channel) {
    try {
      Performance(scenario, home, plugin_, forms_, channel).perform();
    } catch (const std::exception& error) {
      channel.send(kCannotPlay, error.what());
    }
  }

  void receive(const ScenarioFile& scenario, char kind, std::string_view text) {
    switch (kind) {
      case kLoaded:
        isLoaded_ = true;
        openOutputs();
        for (const std::string& line : scenario.notes()) note(line);
        break;
      case kLogLine:
        if (log_) earlyLog_ += text;
        if (reportFile_) report_.line(text.substr(0, text.size() - 1));
        break;
      case kTextLine:
        earlyText_ += text;
        break;
      case kSummary:
        if (options_.summary) addSummary(scenario, text);
        break;
      case kLostMotion:
        if (!text.empty()) note(fmt::format("{}: {}", scenario.name(), text));
        break;
      case kPluginMisused:
        status_ = kMisused;
        break;
      case kBroke:
        failure_ = text;
        break;
      default:
        throw std::runtime_error(std::string(text));
    }
    if (isLoaded_) writeLog();
  }

  /// What was logged before the plug-in was loaded is kept back, because it may yet be refused.
  void writeLog() {
    if (log_) log_->write(earlyLog_);
    if (printed_) printed_->write(earlyText_);
    earlyLog_.clear();
    earlyText_.clear();
  }

  void openOutputs() {
    if (outputsAreOpen_) return;
    outputsAreOpen_ = true;
    if (log_) log_->open();
    if (reportFile_) reportFile_->open();
    if (printed_) printed_->open();
  }

  void addSummary(const ScenarioFile& scenario, std::string_view text) {
    if (scenarios_.size() > 1) {
      summaries_ += fmt::format("{}{}:\n", summaries_.empty() ? "" : "\n", scenario.name());
    }
    summaries_ += text;
  }

  std::string functionOf(const ProcessEnd& end) const {
    if (end.how != ProcessEnd::kSignalled || end.crashOffset == 0) return {};
    const std::string function = functionAt(plugin_, end.crashOffset);
    return function.empty() ? "" : " in " + printable(function, 200);
  }

  void pluginBroke(const ScenarioFile& scenario, const ProcessEnd& end, const std::string& what) {
    status_ = kPluginBroke;
    openOutputs();
    writeLog();
    const Milestone& at = end.milestone;
    if (at.phase == Milestone::kPlaying) {
      whatBroke_ = fmt::format("{}:{}:{}: /steps/{} ({}): the plug-in {}", scenario.name(), at.line,
                               at.column, at.step, at.kind, what);
      return;
    }
    const char* const when = at.phase == Milestone::kUnloading ? "unloaded" : "loaded";
    whatBroke_ =
        fmt::format("{}: the plug-in {} while it was {}", printableFile(plugin_), what, when);
  }

  const PlayOptions& options_;
  std::string plugin_;
  LogForms forms_;
  std::vector<std::unique_ptr<ScenarioFile>> scenarios_;
  std::optional<Output> log_;
  std::optional<Output> reportFile_;
  Report report_;
  std::optional<Output> printed_;  ///< the text and the summaries
  bool outputsAreOpen_ = false;
  bool isLoaded_ = false;
  std::string earlyLog_;
  std::string earlyText_;
  std::string summaries_;
  std::optional<ProgressBar> progress_;  ///< of the scenario that is played
  std::string failure_;    ///< what the plug-in did wrong, if it did not end the process
  std::string whatBroke_;  ///< the line about a plug-in that broke
  int status_ = kDone;
};

}  // namespace

int runPlay(const PlayOptions& options) { return Play(options).run(); }

}  // namespace simulator
