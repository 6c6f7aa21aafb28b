#include "mrvsim/Generation.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <exception>
#include <mutex>
#include <new>
#include <stdexcept>
#include <thread>

#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "simulator/base/Log.h"
#include "simulator/host/Host.h"
#include "simulator/scenario/WatchedProcess.h"
#include "simulator/scenario/Wording.h"
#include "suites/BasicSuite.h"
#include "suites/Suites.h"

namespace simulator {

namespace {

// The messages from the process in which the generator runs.
constexpr char kText = 't';
constexpr char kReached = 'r';
constexpr char kGeneratorMisused = 'u';
constexpr char kCannotGenerate = 'E';  ///< the reason

/// The longest that the generator may take for a piece of text.
constexpr double kTimeout = 60;

/// Prints the generator's system log and its misuses on standard error; drops all other log lines.
void showLog() {
  theLog().setSink([](const Json& line) {
    if (line["what"] != "syslog" && line["what"] != "misuse") return;
    const std::string text = line["text"];
    complain(fmt::format("{}: {}", line["what"].get<std::string>(), printable(text, 1000)));
  });
}

/// Sends from two threads.
class SharedChannel {
 public:
  explicit SharedChannel(Channel& channel) : channel_(channel) {}

  void send(char kind, std::string_view text) {
    const std::lock_guard lock(mutex_);
    channel_.send(kind, text);
    channel_.makeProgress();
  }

 private:
  std::mutex mutex_;
  Channel& channel_;
};

/// Sends what arrives at the pipe until its other end is closed.
void relayText(int in, SharedChannel& channel) {
  std::array<char, 65536> buffer;
  for (ssize_t size; (size = read(in, buffer.data(), buffer.size())) != 0;) {
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) return;
    channel.send(kText, {buffer.data(), static_cast<std::size_t>(size)});
  }
}

/// The generator writes to a pipe, which has no limit at which its writes would fail unnoticed.
void runGenerator(const std::function<void(const GeneratorSide&)>& work, SharedChannel& channel) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("there is no pipe left");
  const OpenFile in(ends[0]);
  OpenFile out(ends[1]);
  std::thread relay([&] { relayText(in.get(), channel); });
  std::exception_ptr failure;
  try {
    sSPBasic = theHost().basicSuite();
    work({.file = fmt::format("/proc/self/fd/{}", out.get()), .reached = [&](std::uint64_t offset) {
            channel.send(kReached, std::to_string(offset));
          }});
    PIUSuitesRelease();
    theHost().reportLeaks();
  } catch (...) {
    failure = std::current_exception();
  }
  out = OpenFile();
  relay.join();
  if (failure) std::rethrow_exception(failure);
}

void runChild(const std::function<void(const GeneratorSide&)>& work, Channel& pipe) {
  SharedChannel channel(pipe);
  try {
    showLog();
    runGenerator(work, channel);
    if (theLog().misuses() > 0) channel.send(kGeneratorMisused, "");
  } catch (const std::bad_alloc&) {
    channel.send(kCannotGenerate, "there is not enough memory");
  } catch (const std::exception& error) {
    channel.send(kCannotGenerate, error.what());
  }
}

}  // namespace

int generate(const std::string& name, const std::function<void(const GeneratorSide&)>& work,
             const GenerationObserver& observer) {
  int status = kDone;
  WatchedProcess process([&](Channel& channel) { runChild(work, channel); }, kTimeout);
  const ProcessEnd end = process.watch([&](char kind, std::string_view text) {
    if (kind == kText) observer.text(text);
    if (kind == kReached) observer.progress(std::stoull(std::string(text)));
    if (kind == kGeneratorMisused) status = kMisused;
    if (kind == kCannotGenerate) throw std::runtime_error(std::string(text));
  });
  if (end.how == ProcessEnd::kFinished) return status;
  complain(fmt::format("{}: the generator {}", name, end.text(kTimeout)));
  return kPluginBroke;
}

}  // namespace simulator
