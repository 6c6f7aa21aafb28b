#include "simulator/macos/RunLoops.h"

#include <Carbon/Carbon.h>
#include <pthread.h>
#include <sys/rseq.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <thread>

#include "simulator/base/Log.h"
#include "simulator/macos/MacFaults.h"

namespace simulator {

namespace {

thread_local std::shared_ptr<RunLoop> currentLoop;

}  // namespace

template <class Condition>
bool Gate::isSoon(Condition condition) {
  constexpr int kYields = 64;
  for (int yields = 0; yields < kYields; ++yields) {
    if (condition()) return true;
    std::this_thread::yield();
  }
  return condition();
}

template <class Condition>
void Gate::waitFor(Condition condition) {
  if (isSoon(condition)) return;
  std::unique_lock lock(mutex_);
  ++sleepers_;
  changed_.wait(lock, condition);
  --sleepers_;
}

template <class Condition>
bool Gate::waitUntil(std::chrono::steady_clock::time_point end, Condition condition) {
  if (isSoon(condition)) return true;
  std::unique_lock lock(mutex_);
  ++sleepers_;
  const bool isTrue = changed_.wait_until(lock, end, condition);
  --sleepers_;
  return isTrue;
}

void Gate::changed() {
  if (sleepers_ == 0) return;
  const std::lock_guard lock(mutex_);
  changed_.notify_all();
}

// All loops share the lock of `Threads`, because waitUntilIdle depends on every loop.

void RunLoop::perform(std::function<void()> work) {
  Threads& threads = theThreads();
  {
    const std::lock_guard lock(threads.mutex_);
    stopWaiting();
    work_.push_back(std::move(work));
    hasWork_ = true;
  }
  gate_.changed();
}

void RunLoop::stopWaiting() {
  if (waiting_ && isTask_) ++theThreads().busy_;
  waiting_ = false;
}

/// Returns when no work is left; then the loop counts as waiting.
void RunLoop::finishWork() {
  Threads& threads = theThreads();
  std::unique_lock lock(threads.mutex_);
  while (!work_.empty()) {
    const auto work = std::move(work_.front());
    work_.pop_front();
    lock.unlock();
    work();
    lock.lock();
  }
  hasWork_ = false;
  if (waiting_) return;
  waiting_ = true;
  lock.unlock();
  if (isTask_) threads.setBusy(-1);
}

void RunLoop::run(double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                      std::chrono::duration<double>(seconds));
  while (true) {
    finishWork();
    const auto hasWork = [this] { return hasWork_.load(); };
    if (seconds < 0) {
      gate_.waitFor(hasWork);
    } else if (!gate_.waitUntil(end, hasWork)) {
      break;
    }
  }
  const std::lock_guard lock(theThreads().mutex_);
  stopWaiting();
}

OSStatus Threads::start(TaskProc entry, void* parameter, ByteCount stackSize, MPTaskID* task) {
  if (task == nullptr) theLog().misuse("MPCreateTask: no place for the task's id");
  theLog().write("thread", {{"do", "start"}, {"stack", stackSize}});
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, stackSize);
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  MPTaskID id = nullptr;
  {
    const std::lock_guard lock(mutex_);
    setBusy(1);
    ++started_;
    id = reinterpret_cast<MPTaskID>(static_cast<std::uintptr_t>(started_));
  }
  auto start = std::make_unique<Start>(entry, parameter);
  pthread_t thread;
  const bool made = pthread_create(&thread, &attributes, body, start.get()) == 0;
  pthread_attr_destroy(&attributes);
  if (!made) {
    setBusy(-1);
    return paramErr;
  }
  start.release();
  if (task != nullptr) *task = id;
  return noErr;
}

void* Threads::body(void* parameter) {
  const std::unique_ptr<Start> start(static_cast<Start*>(parameter));
  leaveRestartableSequences();
  current()->isTask_ = true;
  theThreads().waitAtStart();
  start->entry(start->parameter);
  theThreads().setBusy(-1);
  return nullptr;
}

void Threads::holdNewTasks(bool hold) {
  const std::lock_guard lock(mutex_);
  held_ = hold;
  released_.notify_all();
}

void Threads::waitAtStart() {
  std::unique_lock lock(mutex_);
  released_.wait(lock, [this] { return !held_; });
}

void Threads::waitUntilIdle() {
  idle_.waitFor([this] { return busy_ == 0; });
}

std::shared_ptr<RunLoop> Threads::current() {
  if (!currentLoop) currentLoop = std::make_shared<RunLoop>();
  return currentLoop;
}

int Threads::started() {
  const std::lock_guard lock(mutex_);
  return started_;
}

void Threads::setBusy(int change) {
  if ((busy_ += change) == 0) idle_.changed();
}

void leaveRestartableSequences() {
  if (__rseq_size == 0) return;
  char* const registered = static_cast<char*>(__builtin_thread_pointer()) + __rseq_offset;
  syscall(SYS_rseq, registered, sizeof(struct rseq), RSEQ_FLAG_UNREGISTER, RSEQ_SIG);
}

Threads& theThreads() {
  static Threads& threads = *new Threads;
  return threads;
}

}  // namespace simulator

OSStatus MPCreateTask(TaskProc entryPoint, void* parameter, ByteCount stackSize, MPQueueID, void*,
                      void*, MPTaskOptions, MPTaskID* task) {
  if (const auto error = simulator::failureOf(simulator::MacCall::kMPCreateTask)) return *error;
  return simulator::theThreads().start(entryPoint, parameter, stackSize, task);
}

OSStatus RunCurrentEventLoop(EventTimeout inTimeout) {
  constexpr OSStatus kLoopTimedOut = -9875;
  if (const auto error = simulator::failureOf(simulator::MacCall::kRunCurrentEventLoop)) {
    return *error;
  }
  simulator::Threads::current()->run(inTimeout);
  return kLoopTimedOut;
}
