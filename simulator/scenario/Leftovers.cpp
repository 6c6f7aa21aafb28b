#include "simulator/scenario/Leftovers.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <set>

namespace simulator {

namespace {

constexpr char kAdd = '+';
constexpr char kForget = '-';

/// Takes the complete records off the front of `text`: what to do, the path, and a zero byte.
void obey(std::string& text, std::set<std::string>& paths) {
  for (std::size_t end; (end = text.find('\0')) != std::string::npos; text.erase(0, end + 1)) {
    const std::string path = text.substr(1, end - 1);
    text[0] == kAdd ? void(paths.insert(path)) : void(paths.erase(path));
  }
}

/// Reads until the parent has closed its end of the pipe, or has ended.
std::set<std::string> listedAtTheEnd(int in) {
  std::set<std::string> paths;
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t size; (size = read(in, buffer.data(), buffer.size())) != 0;) {
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) break;
    text.append(buffer.data(), static_cast<std::size_t>(size));
    obey(text, paths);
  }
  return paths;
}

/// In a session of its own and without the parent's files: Ctrl-C does not reach the guard, and no
/// reader of the parent's output waits for it.
[[noreturn]] void runGuard(int in) {
  setsid();
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) std::signal(signal, SIG_IGN);
  dup2(in, STDIN_FILENO);
  close_range(STDOUT_FILENO, ~0U, 0);
  for (const std::string& path : listedAtTheEnd(STDIN_FILENO)) {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  _exit(0);
}

}  // namespace

bool Leftovers::start() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  process_ = fork();
  if (process_ == 0) {
    close(ends[1]);
    runGuard(ends[0]);
  }
  close(ends[0]);
  pipe_ = ends[1];
  return process_ > 0;
}

void Leftovers::send(char what, const std::string& path) {
  const std::string record = what + path + '\0';
  for (std::size_t done = 0; done < record.size();) {
    const ssize_t written = write(pipe_, record.data() + done, record.size() - done);
    if (written < 0 && errno != EINTR) return;
    if (written > 0) done += static_cast<std::size_t>(written);
  }
}

void Leftovers::add(const std::string& path) {
  if (!wanted_) return;
  if (pipe_ < 0 && !start()) return;
  send(kAdd, path);
}

void Leftovers::forget(const std::string& path) {
  if (pipe_ >= 0) send(kForget, path);
}

void Leftovers::finish() {
  if (pipe_ < 0) return;
  close(pipe_);
  pipe_ = -1;
  while (process_ > 0 && waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
  process_ = 0;
}

void Leftovers::leaveToParent() {
  if (pipe_ >= 0) close(pipe_);
  pipe_ = -1;
  wanted_ = false;
  process_ = 0;
}

Leftovers& theLeftovers() {
  static Leftovers& leftovers = *new Leftovers;
  return leftovers;
}

}  // namespace simulator
