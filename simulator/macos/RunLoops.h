// The threads of the simulated Mac and their event loops.
#pragma once

#include <CoreServices/CoreServices.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace simulator {

/// Where threads wait for a condition that other threads make true. A waiting thread gives its
/// processor away a few times before it sleeps: if all threads share one processor, a sample is
/// handed over and back by two such calls, and no thread has to be woken. [any-thread]
class Gate {
 public:
  /// Waits until `condition()` is true, which reads atomic variables alone.
  template <class Condition>
  void waitFor(Condition condition);

  /// The same until `end` at the latest; returns whether the condition is true.
  template <class Condition>
  bool waitUntil(std::chrono::steady_clock::time_point end, Condition condition);

  /// Call it after every change that may make a condition true.
  void changed();

 private:
  template <class Condition>
  static bool isSoon(Condition condition);

  std::atomic<int> sleepers_ = 0;
  std::mutex mutex_;
  std::condition_variable changed_;
};

/// The event loop of one thread: runs queued functions one after another.
class RunLoop {
 public:
  /// Queues `work` to run on the loop's thread. [any-thread]
  void perform(std::function<void()> work);

  /// Runs queued work for `seconds` of real time, forever if negative. [the loop's own thread]
  void run(double seconds);

 private:
  friend class Threads;
  void finishWork();
  void stopWaiting();

  std::deque<std::function<void()>> work_;
  std::atomic<bool> hasWork_ = false;
  Gate gate_;
  bool waiting_ = false;
  bool isTask_ = false;
};

/// The threads started with `MPCreateTask`. They are never joined and may run until the process
/// ends. [any-thread]
class Threads {
 public:
  /// Starts a thread with a stack of `stackSize` bytes and writes its id, never issued before, to
  /// `task`; paramErr if that fails. A misuse if `task` is null: the platform documents no such
  /// call. The thread starts nevertheless.
  OSStatus start(TaskProc entry, void* parameter, ByteCount stackSize, MPTaskID* task);

  /// While `hold` is set, a new thread waits before it runs its entry function: a thread created
  /// during a step starts after the main thread has finished that step.
  void holdNewTasks(bool hold);

  /// Waits until every thread has ended or waits in its event loop with no work queued.
  void waitUntilIdle();

  /// The event loop of the calling thread.
  static std::shared_ptr<RunLoop> current();

  /// The number of threads started so far.
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
  std::condition_variable released_;
  bool held_ = false;
  std::atomic<int> busy_ = 0;  ///< threads that have neither ended nor wait in their event loop
  Gate idle_;
  int started_ = 0;
};

/// Ends the calling thread's registration for restartable sequences (rseq(2)), which the C library
/// makes for every thread and nothing here uses: the system then has less to do at each switch to
/// the thread. Nothing changes if the system refuses. [any-thread]
void leaveRestartableSequences();

/// The threads of this process. Never destroyed, so threads may use it until the process ends.
/// [any-thread]
Threads& theThreads();

}  // namespace simulator
