#include "simulator/macos/RunLoops.h"

#include <Carbon/Carbon.h>
#include <pthread.h>

#include <chrono>

#include "simulator/base/Log.h"

namespace simulator {

namespace {

thread_local std::shared_ptr<RunLoop> currentLoop;

}  // namespace

// All loops share the lock of `Threads`, because waitUntilIdle depends on every loop.

void RunLoop::perform(std::function<void()> work) {
  Threads& threads = theThreads();
  {
    const std::lock_guard lock(threads.mutex_);
    if (waiting_ && isTask_ && work_.empty()) ++threads.busy_;
    work_.push_back(std::move(work));
  }
  // Without the lock, for which the woken thread would have to sleep again.
  wake_.notify_one();
}

void RunLoop::finishWork(std::unique_lock<std::mutex>& lock) {
  while (!work_.empty()) {
    const auto work = std::move(work_.front());
    work_.pop_front();
    lock.unlock();
    work();
    lock.lock();
  }
}

void RunLoop::run(double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                      std::chrono::duration<double>(seconds));
  Threads& threads = theThreads();
  std::unique_lock lock(threads.mutex_);
  while (true) {
    finishWork(lock);
    waiting_ = true;
    if (isTask_) --threads.busy_;
    lock.unlock();
    threads.idle_.notify_all();
    lock.lock();
    const auto hasWork = [this] { return !work_.empty(); };
    bool woken = true;
    if (seconds < 0) {
      wake_.wait(lock, hasWork);
    } else {
      woken = wake_.wait_until(lock, end, hasWork);
    }
    waiting_ = false;
    if (!woken) {
      if (isTask_) ++threads.busy_;
      return;
    }
  }
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
    ++busy_;
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
  std::unique_lock lock(mutex_);
  idle_.wait(lock, [this] { return busy_ == 0; });
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
  const std::lock_guard lock(mutex_);
  busy_ += change;
  idle_.notify_all();
}

Threads& theThreads() {
  static Threads& threads = *new Threads;
  return threads;
}

}  // namespace simulator

OSStatus MPCreateTask(TaskProc entryPoint, void* parameter, ByteCount stackSize, MPQueueID, void*,
                      void*, MPTaskOptions, MPTaskID* task) {
  return simulator::theThreads().start(entryPoint, parameter, stackSize, task);
}

OSStatus RunCurrentEventLoop(EventTimeout inTimeout) {
  constexpr OSStatus kLoopTimedOut = -9875;
  simulator::Threads::current()->run(inTimeout);
  return kLoopTimedOut;
}
