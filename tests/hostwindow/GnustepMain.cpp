// Runs the tests in a child process with an X server without a screen and a temporary folder of its
// own, so copies that run at the same time do not meet. Both go after the child has ended, also if
// it crashed; if this process is killed, the X server and the child end with it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "tests/support/Process.h"

namespace {

/// Set in the child to the display of its X server.
constexpr const char* kDisplay = "MRV_TEST_DISPLAY";

/// A child process. It gets `signal` when this process ends.
class Child {
 public:
  Child(int signal, const std::function<void()>& body) : process_(fork()) {
    if (process_ != 0) return;
    prctl(PR_SET_PDEATHSIG, signal);
    body();
    std::perror("a test's child process");
    _exit(127);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  void end() {
    kill(process_, SIGTERM);
    wait();
  }

  /// Returns the exit status; 1 if a signal ended the process.
  int wait() {
    int status = 0;
    waitpid(process_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
  }

 private:
  pid_t process_;
};

/// An X server with the simulated Mac's screen. It chooses a display that no other server has.
class XServer {
 public:
  XServer() : server_(SIGTERM, [this] { start(); }) {
    close(pipe_.write);
    for (char digit = 0; read(pipe_.read, &digit, 1) == 1 && digit != '\n';) display_ += digit;
    close(pipe_.read);
  }
  ~XServer() { server_.end(); }
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  /// ":" and a number; empty if the server did not start.
  std::string display() const { return display_.empty() ? "" : ":" + display_; }

 private:
  struct Pipe {
    int read, write;
    Pipe() {
      int ends[2];
      if (pipe(ends) != 0) std::abort();
      read = ends[0];
      write = ends[1];
    }
  };

  void start() const {
    const std::string write = std::to_string(pipe_.write);
    const int silence = open("/dev/null", O_WRONLY);
    dup2(silence, STDERR_FILENO);
    execl(MRV_XVFB, MRV_XVFB, "-displayfd", write.c_str(), "-screen", "0", "1440x900x24",
          "-nolisten", "tcp", nullptr);
  }

  Pipe pipe_;
  std::string display_;
  Child server_;
};

int runTests(char** arguments) {
  const testing_support::TemporaryFolder folder;
  const XServer server;
  if (server.display().empty()) {
    std::cerr << MRV_XVFB << " gave no display\n";
    return 1;
  }
  setenv(kDisplay, server.display().c_str(), 1);
  setenv("DISPLAY", server.display().c_str(), 1);
  // Where GNUstep keeps its temporary files.
  setenv("TMP", folder.file("").c_str(), 1);
  Child tests(SIGKILL, [arguments] { execv("/proc/self/exe", arguments); });
  return tests.wait();
}

}  // namespace

int main(int count, char** arguments) {
  if (std::getenv(kDisplay) == nullptr) {
    // GoogleTest removes its own arguments, and the child needs them.
    std::vector<char*> own(arguments, arguments + count + 1);
    int ownCount = count;
    testing::InitGoogleTest(&ownCount, own.data());
    if (!testing::GTEST_FLAG(list_tests)) return runTests(arguments);
  } else {
    testing::InitGoogleTest(&count, arguments);
  }
  return RUN_ALL_TESTS();
}
