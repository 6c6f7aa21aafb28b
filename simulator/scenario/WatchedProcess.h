// Runs work in a child process that may crash, end or loop: the parent stays whole, learns what
// happened, and leaves no process behind.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "simulator/scenario/CrashReport.h"
#include "simulator/scenario/InputFile.h"

namespace simulator {

/// How far the child has come. It lies in memory that both processes share; the parent reads it
/// after the child's end.
struct Milestone {
  enum Phase { kStarting, kLoading, kPlaying, kUnloading } phase = kStarting;
  std::uint64_t step = 0;  ///< while playing: the step's index, and its place in the scenario
  std::uint64_t line = 0;
  std::uint64_t column = 0;
  char kind[24] = {};
};

struct SharedState;

/// The child's connection to its parent. What was sent arrives even if the child crashes
/// afterwards. [one thread at a time]
class Channel {
 public:
  Channel(SharedState& shared, int pipe) : shared_(shared), pipe_(pipe) {}

  /// Sends a message of a kind that both sides know.
  void send(char kind, std::string_view text);

  /// Sends what is held back in memory.
  void flush();

  /// Starts the time limit anew and says where the child is now.
  void reach(const Milestone& milestone);
  void makeProgress();

 private:
  void writeToPipe(const char* bytes, std::size_t size);

  SharedState& shared_;
  int pipe_;
};

/// The end of a child.
struct ProcessEnd {
  enum How { kFinished, kExited, kSignalled, kTimedOut } how = kFinished;
  int number = 0;  ///< the exit status or the signal
  Milestone milestone;
  std::uint64_t crashOffset = 0;  ///< see CrashRecord

  /// "ended the process (exit status 3)", "crashed: SIGSEGV (...)", "did not come back within 10
  /// s".
  std::string text(double seconds) const;
};

/// One child. Without progress it is ended after it has used `seconds` of processor time, after it
/// has stood still for `seconds`, and after it has slept for ten times as long with interruptions.
class WatchedProcess {
 public:
  /// Starts the child, which runs `work` in a session of its own, without standard input and
  /// output, and then ends at once: exit handlers would destroy what its threads still use. `work`
  /// must not throw. Throws `std::runtime_error` if the system refuses. REQUIRES: this process has
  /// one thread.
  WatchedProcess(const std::function<void(Channel&)>& work, double seconds);

  /// Ends the child and every process that it started.
  ~WatchedProcess();
  WatchedProcess(const WatchedProcess&) = delete;
  WatchedProcess& operator=(const WatchedProcess&) = delete;

  /// Passes on each message until the child has ended, and several times a second how far it is, if
  /// `progress` is not empty. What they throw ends the child. Throws `Interrupted`.
  ProcessEnd watch(const std::function<void(char kind, std::string_view text)>& receive,
                   const std::function<void(const Milestone&)>& progress = {});

 private:
  struct Watch;
  [[noreturn]] void runChild(const std::function<void(Channel&)>& work, pid_t parent, int out);
  bool receiveSome(const std::function<void(char, std::string_view)>& receive);
  void receiveRest(const std::function<void(char, std::string_view)>& receive);
  void deliver(const std::function<void(char, std::string_view)>& receive);
  bool hasEnded();
  void reap();
  bool isLate(Watch& watch) const;
  ProcessEnd end(bool timedOut) const;
  void kill();

  double seconds_;
  std::unique_ptr<SharedState, void (*)(SharedState*)> shared_;
  OpenFile pipe_;
  OpenFile handle_;  ///< becomes readable when the child has ended
  pid_t process_ = 0;
  bool reaped_ = false;
  int status_ = 0;
  std::uint64_t received_ = 0;  ///< bytes that came through the pipe
  std::string incomplete_;      ///< the bytes of messages that are not complete yet
};

/// From now on processes that outlive the child that started them become children of this one, so
/// that they can be ended. [main-thread]
void adoptOrphans();

}  // namespace simulator
