#include "simulator/check/ChildProcess.h"

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace simulator {

namespace {

constexpr unsigned kLongestRun = 60;

struct Pipe {
  Pipe() {
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe to be had");
  }
  std::array<int, 2> ends{};
};

Json answerOf(const std::function<Json()>& work) {
  try {
    return {{"returned", work()}};
  } catch (const std::exception& error) {
    return {{"threw", error.what()}};
  }
}

[[noreturn]] void runChild(const std::function<Json()>& work, int out) {
  alarm(kLongestRun);
  const std::string text = answerOf(work).dump(-1, ' ', false, Json::error_handler_t::replace);
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t written = write(out, text.data() + done, text.size() - done);
    if (written <= 0) break;
    done += static_cast<std::size_t>(written);
  }
  // Skips exit handlers: they would destroy what the simulated Mac's threads still use.
  std::_Exit(0);
}

std::string readAll(int in) {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t size; (size = read(in, buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(size));
  }
  return text;
}

std::string endOf(int status) {
  if (!WIFSIGNALED(status)) {
    // A sanitizer turns a crash into an exit status.
    return fmt::format("ended its process (status {})", WEXITSTATUS(status));
  }
  if (WTERMSIG(status) == SIGALRM) return fmt::format("took more than {} s", kLongestRun);
  return fmt::format("crashed ({})", strsignal(WTERMSIG(status)));
}

}  // namespace

Json inChildProcess(const std::function<Json()>& work) {
  const Pipe pipe;
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process to be had");
  if (child == 0) runChild(work, pipe.ends[1]);
  close(pipe.ends[1]);
  const std::string text = readAll(pipe.ends[0]);
  close(pipe.ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  const Json answer = Json::parse(text, nullptr, false);
  if (answer.contains("threw")) throw std::runtime_error(answer["threw"].get<std::string>());
  if (status != 0 || !answer.contains("returned")) throw std::runtime_error(endOf(status));
  return answer["returned"];
}

}  // namespace simulator
