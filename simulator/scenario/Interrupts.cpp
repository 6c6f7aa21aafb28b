#include "simulator/scenario/Interrupts.h"

#include <unistd.h>

#include <array>
#include <csignal>

namespace simulator {

namespace {

constexpr std::array kEnding = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

volatile std::sig_atomic_t notedSignal = 0;

/// The alarm interrupts a system call that began after the signal came and before it could be seen.
void note(int signal) {
  notedSignal = signal;
  alarm(1);
}

void remind(int) { alarm(1); }

/// Without SA_RESTART: system calls return with EINTR.
void handle(int signal, void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  sigaction(signal, &action, nullptr);
}

bool isIgnored(int signal) {
  struct sigaction action = {};
  sigaction(signal, nullptr, &action);
  return action.sa_handler == SIG_IGN;
}

}  // namespace

void noteInterrupts() {
  handle(SIGPIPE, SIG_IGN);
  handle(SIGXFSZ, SIG_IGN);
  handle(SIGALRM, remind);
  for (const int signal : kEnding) {
    if (!isIgnored(signal)) handle(signal, note);
  }
}

void throwIfInterrupted() {
  if (notedSignal != 0) throw Interrupted{static_cast<int>(notedSignal)};
}

void settleInterrupt() {
  alarm(0);
  notedSignal = 0;
}

void forgetInterrupts() {
  alarm(0);
  handle(SIGPIPE, SIG_DFL);
  handle(SIGALRM, SIG_DFL);
  for (const int signal : kEnding) handle(signal, SIG_DFL);
}

}  // namespace simulator
