#include "mrvsim/live/PluginProcess.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>

#include "mrvsim/PluginFailure.h"
#include "mrvsim/live/Gauges.h"
#include "simulator/base/Log.h"
#include "simulator/host/DocumentView.h"
#include "simulator/host/Host.h"
#include "simulator/macos/WindowServer.h"
#include "simulator/moravin/Framework.h"
#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/Interrupts.h"
#include "simulator/scenario/Leftovers.h"
#include "simulator/scenario/OutputCapture.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/ScenarioReader.h"
#include "simulator/scenario/WatchedProcess.h"
#include "simulator/scenario/Wording.h"

namespace simulator::live {

namespace {

/// How long the plug-in's process waits for orders before it says that it is well, in
/// milliseconds.
int breathOf(double timeout) { return std::clamp(static_cast<int>(timeout * 250), 1, 20); }

template <class Number>
Number numberIn(std::string_view text) {
  Number number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// Takes the part before the first blank off the front.
std::string_view takeWord(std::string_view& text) {
  const std::size_t end = text.find(' ');
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return word;
}

std::int64_t nanosecondsNow() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

/// The orders, line by line. A child takes over what its parent has read.
class Orders {
 public:
  explicit Orders(int pipe) : pipe_(pipe) {}

  /// The next line; nullopt if none comes within the time, in milliseconds (-1: waits for it), or
  /// after the end.
  std::optional<std::string> next(int milliseconds) {
    while (true) {
      const std::size_t end = held_.find('\n', at_);
      if (end != std::string::npos) {
        std::string line = held_.substr(at_, end - at_);
        at_ = end + 1;
        return line;
      }
      held_.erase(0, at_);
      at_ = 0;
      if (!readMore(milliseconds)) return std::nullopt;
    }
  }

  bool haveEnded() const { return haveEnded_; }

  /// Forgets what was read.
  void drop() {
    held_.clear();
    at_ = 0;
  }

  /// Whether the next line has already been read.
  bool isReady() const { return held_.find('\n', at_) != std::string::npos; }

 private:
  bool readMore(int milliseconds) {
    pollfd event = {pipe_, POLLIN, 0};
    if (poll(&event, 1, milliseconds) <= 0) return false;
    std::array<char, 65536> buffer;
    const ssize_t size = read(pipe_, buffer.data(), buffer.size());
    if (size > 0) held_.append(buffer.data(), static_cast<std::size_t>(size));
    haveEnded_ = size == 0 || (size < 0 && errno != EINTR);
    return size > 0;
  }

  int pipe_;
  bool haveEnded_ = false;
  std::string held_;
  std::size_t at_ = 0;
};

// The messages that do not reach the window.
constexpr char kCannotPlay = 'X';
constexpr char kBroke = 'K';

/// Plays in the process that may crash.
class Performer {
 public:
  Performer(const Scenario& setup, const TemporaryHome& home, const PluginFiles& files,
            double timeout, Orders& orders, Channel& channel)
      : home_(home),
        files_(files),
        breath_(breathOf(timeout)),
        orders_(orders),
        channel_(channel),
        player_(setup, home, &gauges_) {}

  /// Sends everything that happens; does not throw.
  void perform() {
    try {
      load();
      play();
    } catch (const std::exception& error) {
      channel_.send(kCannotPlay, error.what());
    }
    theLog().setPrelude({});
    theLog().setSink({});
  }

 private:
  void play() {
    try {
      obeyAll();
      unload();
    } catch (...) {
      channel_.send(kBroke, fmt::format("threw {} through its entry point or a handler",
                                        describeException()));
    }
  }

  void obeyAll() {
    while (!isFinished_ && !orders_.haveEnded()) {
      const auto line = orders_.next(breath_);
      channel_.makeProgress();
      if (line) obey(*line);
      if (!orders_.isReady()) report();
    }
  }

  void load() {
    theLog().setSink([this](const LogLine& line) { logged(line); });
    theLog().setPrelude([this] { capture_.drain([this](const auto& text) { printed(text); }); });
    watchModule(std::filesystem::absolute(files_.plugin).string());
    channel_.reach({.phase = Milestone::kLoading});
    player_.load(files_.plugin, files_.framework);
    channel_.send(message::kWasLoaded, "");
    channel_.flush();
  }

  void obey(std::string_view order) {
    const char kind = order.front();
    order.remove_prefix(std::min<std::size_t>(order.size(), 2));
    if (kind == order::kTakeStep) {
      take(order);
    } else if (kind == order::kReach) {
      player_.advanceTo(numberIn<std::int64_t>(order));
    } else if (kind == order::kAnswer) {
      report();
      channel_.send(message::kAnswered, order);
      channel_.flush();
    } else {
      isFinished_ = kind == order::kFinish;
    }
  }

  void take(std::string_view order) {
    inputTime_ = numberIn<std::int64_t>(takeWord(order));
    Milestone milestone = {Milestone::kPlaying, stepsTaken_++};
    takeWord(order).copy(milestone.kind, sizeof milestone.kind - 1);
    channel_.reach(milestone);
    const Scenario scenario = parseScenario(fmt::format("{{\"steps\": [{}]}}", order), "step");
    for (const Step& step : scenario.steps) player_.take(step);
    inputTime_ = 0;
  }

  void unload() {
    channel_.reach({.phase = Milestone::kUnloading});
    player_.unload();
    capture_.finish([this](const auto& text) { printed(text); });
  }

  void logged(const LogLine& line) {
    const bool isKey = line.has(R"("class":"keyb")");
    if (inputTime_ != 0 && line.what() == "posted" && !isKey) {
      channel_.send(message::kDelay, std::to_string(nanosecondsNow() - inputTime_));
    }
    gauges_.line(line);
    text_.clear();
    line.appendTo(text_);
    channel_.send(message::kLogged, text_);
  }

  void printed(const std::string& text) {
    theLog().write("printed", {{"text", withHomeAsTilde(text, home_.path().string())}});
  }

  /// Sends the state if it has changed, and everything that waits to be sent.
  void report() {
    const DocumentView& view = theDocumentView();
    const WindowState& window = theWindowServer().window();
    HostState state;
    std::memset(static_cast<void*>(&state), 0, sizeof state);
    state.zoom = view.zoom;
    state.origin = view.origin;
    state.brush = theHost().brush().value_or(-1);
    state.frame = window.frame;
    state.content = window.content;
    state.hasWindow = window.isMain;
    state.isPending = window.viewsNeedDisplay;
    state.isConnected = theFramework().isInstalled();
    state.zoomCounts = gauges_.zoom();
    state.panPixels = gauges_.pan();
    state.brushCounts = gauges_.brush();
    state.wait = gauges_.wait();
    std::string bytes(sizeof state, '\0');
    std::memcpy(bytes.data(), &state, sizeof state);
    if (bytes != reported_) channel_.send(message::kHostState, bytes);
    reported_ = bytes;
    channel_.flush();
  }

  const TemporaryHome& home_;
  const PluginFiles& files_;
  const int breath_;
  Orders& orders_;
  Channel& channel_;
  OutputCapture capture_;
  Gauges gauges_;
  Player player_;
  bool isFinished_ = false;
  std::uint64_t stepsTaken_ = 0;
  std::int64_t inputTime_ = 0;
  std::string text_;
  std::string reported_;
};

/// Starts plug-ins as the orders say, in a process that the window does not share.
class Keeper {
 public:
  Keeper(const PluginFiles& files, double timeout, int orders, int messages)
      : files_(files), timeout_(timeout), orders_(orders), messages_(messages) {}

  /// Returns after the orders' end.
  void keep() {
    while (!orders_.haveEnded()) {
      throwIfInterrupted();
      const auto order = orders_.next(-1);
      if (order && order->starts_with(order::kStart)) play(order->substr(2));
    }
  }

  /// Sends a message to the window; ends this process if there is no window any more.
  void send(char kind, std::string_view text) {
    std::array<char, 5> head = {kind};
    const auto size = static_cast<std::uint32_t>(text.size());
    std::memcpy(head.data() + 1, &size, sizeof size);
    sendAll({head.data(), head.size()});
    sendAll(text);
  }

 private:
  struct NoWindow {};

  void play(const std::string& setup) {
    const Scenario scenario = parseScenario(setup, "set-up");
    const TemporaryHome home;
    broke_.clear();
    WatchedProcess process(
        [&](Channel& channel) {
          Performer(scenario, home, files_, timeout_, orders_, channel).perform();
        },
        timeout_);
    // The plug-in's process has what was read, and reads the rest.
    orders_.drop();
    const ProcessEnd end =
        process.watch([this](char kind, std::string_view text) { receive(kind, text); });
    if (broke_.empty() && end.how != ProcessEnd::kFinished) {
      broke_ = end.text(timeout_) + functionOf(end);
    }
    send(message::kEnded, broke_.empty() ? "" : sentence(end.milestone));
  }

  void receive(char kind, std::string_view text) {
    if (kind == kCannotPlay) throw std::runtime_error(std::string(text));
    if (kind == kBroke) {
      broke_ = text;
    } else {
      send(kind, text);
    }
  }

  std::string functionOf(const ProcessEnd& end) const {
    if (end.how != ProcessEnd::kSignalled || end.crashOffset == 0) return {};
    const std::string function = functionAt(files_.plugin, end.crashOffset);
    return function.empty() ? "" : " in " + printable(function, 200);
  }

  std::string sentence(const Milestone& at) const {
    if (at.phase == Milestone::kPlaying) {
      return fmt::format("/steps/{} ({}): the plug-in {}", at.step, at.kind, broke_);
    }
    const char* const when = at.phase == Milestone::kUnloading ? "unloaded" : "loaded";
    return fmt::format("{}: the plug-in {} while it was {}", printableFile(files_.plugin), broke_,
                       when);
  }

  void sendAll(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(messages_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) throw NoWindow();
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  const PluginFiles files_;
  const double timeout_;
  Orders orders_;
  const int messages_;
  std::string broke_;  ///< what the plug-in did wrong; empty: nothing
};

/// In a session of its own, so that Ctrl-C reaches the window alone, which then unloads the
/// plug-in.
[[noreturn]] void runKeeper(const PluginFiles& files, double timeout, int orders, int messages) {
  setsid();
  theLeftovers().leaveToParent();
  theLeftovers().guard();
  adoptOrphans();
  Keeper keeper(files, timeout, orders, messages);
  try {
    keeper.keep();
  } catch (const std::exception& error) {
    try {
      keeper.send(message::kFailed, error.what());
    } catch (...) {
      // There is no window any more to read it.
    }
  } catch (...) {
    // The window has gone, or a signal has come.
  }
  theLeftovers().finish();
  std::_Exit(0);
}

}  // namespace

PluginProcess::PluginProcess(const PluginFiles& files, double timeout) {
  std::array<int, 2> in{};
  std::array<int, 2> out{};
  if (pipe2(in.data(), O_CLOEXEC) != 0) throw std::runtime_error("there is no pipe left");
  OpenFile ordersEnd(in[0]);
  orders = OpenFile(in[1]);
  if (pipe2(out.data(), O_CLOEXEC) != 0) throw std::runtime_error("there is no pipe left");
  messages = OpenFile(out[0]);
  const OpenFile messagesEnd(out[1]);
  process_ = fork();
  if (process_ < 0) throw std::runtime_error("there is no process left");
  if (process_ == 0) {
    orders = OpenFile();
    messages = OpenFile();
    runKeeper(files, timeout, ordersEnd.get(), messagesEnd.get());
  }
  fcntl(orders.get(), F_SETFL, O_NONBLOCK);
  fcntl(messages.get(), F_SETFL, O_NONBLOCK);
}

PluginProcess::~PluginProcess() {
  orders = OpenFile();
  messages = OpenFile();
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace simulator::live
