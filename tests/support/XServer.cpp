#include "tests/support/XServer.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace testing_support {

namespace {

void startServer(const std::string& program, const std::string& screen, int write) {
  const int silence = open("/dev/null", O_WRONLY);
  dup2(silence, STDERR_FILENO);
  execl(program.c_str(), program.c_str(), "-displayfd", std::to_string(write).c_str(), "-screen",
        "0", screen.c_str(), "-nolisten", "tcp", nullptr);
}

}  // namespace

Child::Child(int signal, const std::function<void()>& body) : process_(fork()) {
  if (process_ != 0) return;
  prctl(PR_SET_PDEATHSIG, signal);
  body();
  std::perror("a test's child process");
  _exit(127);
}

void Child::end() {
  interrupt(SIGTERM);
  wait();
}

void Child::interrupt(int signal) const { kill(process_, signal); }

int Child::wait() {
  int status = 0;
  waitpid(process_, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

XServer::Pipe::Pipe() {
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  read = ends[0];
  write = ends[1];
}

XServer::XServer(const std::string& program, const std::string& screen)
    : server_(SIGTERM, [&] { startServer(program, screen, pipe_.write); }) {
  close(pipe_.write);
  for (char digit = 0; read(pipe_.read, &digit, 1) == 1 && digit != '\n';) display_ += digit;
  close(pipe_.read);
}

}  // namespace testing_support
