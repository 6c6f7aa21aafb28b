// Threads of the simulated Mac and the event loops that they wait in.
#pragma once

#include <CoreServices/CoreServices.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace simulator {

/// One thread's event loop: runs what others hand to it, one piece after the other.
class RunLoop {
 public:
  /// Hands over a piece of work. [any-thread]
  void perform(std::function<void()> work);

  /// Runs for so many seconds of real time, for ever where negative. [the loop's own thread]
  void run(double seconds);

 private:
  friend class Threads;
  std::deque<std::function<void()>> work_;
  std::condition_variable wake_;
  bool waiting_ = false;
  bool isTask_ = false;
};

/// The threads made by `MPCreateTask`. They live to the process's end; all functions may be called
/// from any thread.
class Threads {
 public:
  /// Starts a thread with that stack.
  OSStatus start(TaskProc entry, void* parameter, ByteCount stackSize);

  /// While held, new threads wait at their beginning, so that what their maker does next comes
  /// first.
  void holdNewTasks(bool hold);

  /// Waits until every thread rests in its event loop with nothing left to do, or has ended.
  void waitUntilIdle();

  /// The event loop of the calling thread.
  static std::shared_ptr<RunLoop> current();

  int started();

 private:
  friend class RunLoop;
  struct Start {
    TaskProc entry;
    void* parameter;
  };

  static void* body(void* start);
  void setBusy(int change);
  void waitAtStart();

  std::mutex mutex_;
  std::condition_variable idle_;
  std::condition_variable released_;
  bool held_ = false;
  int busy_ = 0;
  int started_ = 0;
};

/// The threads of the process; they outlive every static object.
Threads& theThreads();

}  // namespace simulator
