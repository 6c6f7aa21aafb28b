#include "simulator/scenario/WatchedProcess.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <new>
#include <stdexcept>

#include "simulator/scenario/Interrupts.h"
#include "simulator/scenario/Leftovers.h"

namespace simulator {

/// Messages wait in `buffer` until it is full. `sent` is the number of bytes that went through the
/// pipe before those: if the child dies, the parent sees which of them it has not received.
struct SharedState {
  std::atomic<std::uint64_t> progress{0};
  std::atomic<bool> finished{false};
  std::atomic<std::uint64_t> sent{0};
  std::atomic<std::uint64_t> held{0};
  Milestone milestone;
  CrashRecord crash;
  std::array<char, 65536> buffer;
};

namespace {

constexpr std::size_t kHeaderSize = 1 + sizeof(std::uint32_t);

std::array<char, kHeaderSize> header(char kind, std::size_t size) {
  const auto length = static_cast<std::uint32_t>(size);
  std::array<char, kHeaderSize> bytes = {kind};
  std::memcpy(bytes.data() + 1, &length, sizeof length);
  return bytes;
}

SharedState* newSharedState() {
  void* memory =
      mmap(nullptr, sizeof(SharedState), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::runtime_error("there is no memory for another process");
  return new (memory) SharedState;
}

void deleteSharedState(SharedState* state) { munmap(state, sizeof(SharedState)); }

double processorSeconds(pid_t process) {
  clockid_t clock = 0;
  timespec time = {};
  if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) return 0;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// Whether a thread of the process runs or waits for a processor or a disk.
bool isRunnable(pid_t process) {
  std::error_code error;
  const std::filesystem::directory_iterator tasks(fmt::format("/proc/{}/task", process), error);
  for (const auto& task : tasks) {
    std::ifstream stream(task.path() / "stat");
    std::string line;
    std::getline(stream, line);
    // The state follows the name, which is in brackets and may itself contain some.
    const std::size_t state = line.rfind(") ");
    if (state == std::string::npos || state + 2 >= line.size()) continue;
    if (line[state + 2] == 'R' || line[state + 2] == 'D') return true;
  }
  return false;
}

/// Ends what the child's children left behind. They have become children of this process.
void endOrphans() {
  while (true) {
    std::ifstream stream("/proc/thread-self/children");
    bool found = false;
    for (pid_t process = 0; stream >> process;) {
      if (process == theLeftovers().process()) continue;
      ::kill(process, SIGKILL);
      found = waitpid(process, nullptr, 0) == process || found;
    }
    if (!found) return;
  }
}

bool orphansAreAdopted = false;

}  // namespace

void adoptOrphans() { orphansAreAdopted = prctl(PR_SET_CHILD_SUBREAPER, 1) == 0; }

void Channel::send(char kind, std::string_view text) {
  const auto head = header(kind, text.size());
  const std::size_t size = head.size() + text.size();
  if (shared_.held + size > shared_.buffer.size()) flush();
  if (size > shared_.buffer.size()) {
    writeToPipe(head.data(), head.size());
    writeToPipe(text.data(), text.size());
    shared_.sent += size;
    return;
  }
  char* const end = shared_.buffer.data() + shared_.held;
  std::memcpy(end, head.data(), head.size());
  std::memcpy(end + head.size(), text.data(), text.size());
  shared_.held += size;
}

void Channel::flush() {
  const std::uint64_t size = shared_.held;
  writeToPipe(shared_.buffer.data(), size);
  // In this order: at no moment do the bytes seem to be still unsent.
  shared_.held = 0;
  shared_.sent += size;
}

void Channel::writeToPipe(const char* bytes, std::size_t size) {
  for (std::size_t done = 0; done < size;) {
    const ssize_t written = write(pipe_, bytes + done, size - done);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) _exit(1);
    done += static_cast<std::size_t>(written);
  }
}

void Channel::reach(const Milestone& milestone) {
  shared_.milestone = milestone;
  makeProgress();
}

void Channel::makeProgress() { shared_.progress.fetch_add(1, std::memory_order_relaxed); }

std::string ProcessEnd::text(double seconds) const {
  switch (how) {
    case kTimedOut:
      return fmt::format("did not come back within {:g} s", seconds);
    case kSignalled:
      return fmt::format("crashed: {}", signalName(number));
    default:
      return fmt::format("ended the process (exit status {})", number);
  }
}

WatchedProcess::WatchedProcess(const std::function<void(Channel&)>& work, double seconds)
    : seconds_(seconds), shared_(newSharedState(), deleteSharedState) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("there is no pipe left");
  pipe_ = OpenFile(ends[0]);
  OpenFile out(ends[1]);
  std::fflush(nullptr);
  const pid_t parent = getpid();
  process_ = fork();
  if (process_ < 0) throw std::runtime_error("there is no process left");
  if (process_ == 0) runChild(work, parent, out.release());
  fcntl(pipe_.get(), F_SETFL, O_NONBLOCK);
  handle_ = OpenFile(static_cast<int>(syscall(SYS_pidfd_open, process_, 0)));
}

void WatchedProcess::runChild(const std::function<void(Channel&)>& work, pid_t parent, int out) {
  setsid();
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(1);
  forgetInterrupts();
  theLeftovers().leaveToParent();
  close(pipe_.release());
  const OpenFile nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  dup2(nothing.get(), STDIN_FILENO);
  dup2(nothing.get(), STDOUT_FILENO);
  // A crash of a plug-in is reported; a file "core" would only stay behind.
  const rlimit noCore = {0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  recordCrashes(shared_->crash);
  // The library's own handler would print a line.
  std::set_terminate(std::abort);
  Channel channel(*shared_, out);
  work(channel);
  channel.flush();
  shared_->finished = true;
  std::_Exit(0);
}

WatchedProcess::~WatchedProcess() {
  kill();
  if (orphansAreAdopted) endOrphans();
}

void WatchedProcess::kill() {
  if (reaped_) return;
  ::kill(process_, SIGKILL);
  reap();
}

/// Ends the child's session as well, whose number is the child's until the child is reaped.
void WatchedProcess::reap() {
  ::kill(-process_, SIGKILL);
  while (waitpid(process_, &status_, 0) < 0 && errno == EINTR) {
  }
  reaped_ = true;
}

/// What the watch knows about the time since the child's last progress. Only ticks in which the
/// child neither runs nor waits for a processor are counted as waiting, so a busy machine or a slow
/// output does not count.
struct WatchedProcess::Watch {
  explicit Watch(double seconds) : tick(std::clamp(seconds / 20, 0.005, 0.1)) {}

  const double tick;
  std::uint64_t progress = 0;
  double processorAtProgress = 0;
  double processor = 0;
  double waited = 0;
  double stoodStill = 0;  ///< the last ticks in a row in which nothing ran at all
};

bool WatchedProcess::isLate(Watch& watch) const {
  const double processor = processorSeconds(process_);
  const std::uint64_t progress = shared_->progress;
  if (progress != watch.progress) {
    watch.progress = progress;
    watch.processorAtProgress = processor;
    watch.waited = watch.stoodStill = 0;
  }
  const bool waits = !isRunnable(process_);
  const bool standsStill = waits && processor == watch.processor;
  watch.stoodStill = standsStill ? watch.stoodStill + watch.tick : 0;
  if (waits) watch.waited += watch.tick;
  watch.processor = processor;
  return processor - watch.processorAtProgress >= seconds_ || watch.stoodStill >= seconds_ ||
         watch.waited >= 10 * seconds_;
}

/// Calls `receive` for every complete message.
void WatchedProcess::deliver(const std::function<void(char, std::string_view)>& receive) {
  std::size_t at = 0;
  while (incomplete_.size() - at >= kHeaderSize) {
    std::uint32_t size = 0;
    std::memcpy(&size, incomplete_.data() + at + 1, sizeof size);
    if (incomplete_.size() - at - kHeaderSize < size) break;
    receive(incomplete_[at], std::string_view(incomplete_).substr(at + kHeaderSize, size));
    at += kHeaderSize + size;
  }
  incomplete_.erase(0, at);
}

/// Returns false if the pipe is empty for now or for good.
bool WatchedProcess::receiveSome(const std::function<void(char, std::string_view)>& receive) {
  std::array<char, 65536> buffer;
  const ssize_t size = read(pipe_.get(), buffer.data(), buffer.size());
  if (size == 0) pipe_ = OpenFile();
  if (size <= 0) return false;
  received_ += static_cast<std::uint64_t>(size);
  incomplete_.append(buffer.data(), static_cast<std::size_t>(size));
  deliver(receive);
  return true;
}

/// After the child's end: the rest of the pipe, and what the child could not send any more.
void WatchedProcess::receiveRest(const std::function<void(char, std::string_view)>& receive) {
  while (receiveSome(receive)) {
  }
  const std::uint64_t sent = shared_->sent;
  const std::uint64_t held = shared_->held;
  if (received_ < sent || received_ >= sent + held) return;
  incomplete_.append(shared_->buffer.data() + (received_ - sent), sent + held - received_);
  deliver(receive);
}

bool WatchedProcess::hasEnded() {
  siginfo_t info = {};
  constexpr int kOnlyLook = WEXITED | WNOHANG | WNOWAIT;
  const auto id = static_cast<id_t>(process_);
  if (!reaped_ && waitid(P_PID, id, &info, kOnlyLook) == 0 && info.si_pid == process_) reap();
  return reaped_;
}

ProcessEnd WatchedProcess::end(bool timedOut) const {
  ProcessEnd end;
  end.milestone = shared_->milestone;
  end.crashOffset = shared_->crash.offset;
  if (timedOut) {
    end.how = ProcessEnd::kTimedOut;
  } else if (WIFSIGNALED(status_)) {
    end.how = ProcessEnd::kSignalled;
    end.number = WTERMSIG(status_);
  } else if (!shared_->finished || WEXITSTATUS(status_) != 0) {
    end.how = ProcessEnd::kExited;
    end.number = WEXITSTATUS(status_);
  }
  return end;
}

ProcessEnd WatchedProcess::watch(const std::function<void(char, std::string_view)>& receive,
                                 const std::function<void(const Milestone&)>& progress) {
  using Clock = std::chrono::steady_clock;
  Watch watch(seconds_);
  const auto tick =
      std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(watch.tick));
  auto nextTick = Clock::now() + tick;
  bool late = false;
  while (!hasEnded()) {
    throwIfInterrupted();
    std::array<pollfd, 2> events = {pollfd{pipe_.get(), POLLIN, 0}, {handle_.get(), POLLIN, 0}};
    poll(events.data(), events.size(), static_cast<int>(watch.tick * 1000));
    if (events[0].revents != 0) receiveSome(receive);
    if (Clock::now() < nextTick) continue;
    if (progress) progress(shared_->milestone);
    late = isLate(watch);
    if (late) break;
    nextTick = Clock::now() + tick;
  }
  kill();
  receiveRest(receive);
  return end(late);
}

}  // namespace simulator
