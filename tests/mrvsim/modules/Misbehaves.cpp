// A plug-in that misbehaves as the variable MISBEHAVE of its environment says: at the call
// "Startup", or while it is loaded or unloaded.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

bool isTold(const char* what) {
  const char* const told = std::getenv("MISBEHAVE");
  return told != nullptr && std::strcmp(told, what) == 0;
}

/// Writes to the variable's named pipe, so that a test knows how far this is.
void sayHello() {
  const char* const pipe = std::getenv("HELLO");
  if (pipe == nullptr) return;
  const int file = open(pipe, O_WRONLY | O_CLOEXEC);
  if (write(file, "!", 1) == 1) close(file);
}

}  // namespace

// Not inlined and not local, so that messages can name them in every build.
#define MISDEED __attribute__((noinline)) void

MISDEED writeToNowhere() {
  volatile std::uintptr_t nowhere = 16;
  *reinterpret_cast<volatile int*>(nowhere) = 1;
}

MISDEED spin() {
  sayHello();
  for (volatile unsigned turns = 0;;) {
    turns = turns + 1;
  }
}

MISDEED spinWithASleep() {
  while (true) usleep(1000);
}

__attribute__((no_sanitize("undefined"))) MISDEED divideByZero() {
  volatile int zero = 0;
  zero = 7 / zero;
}

MISDEED giveUp() { std::abort(); }

MISDEED throwANumber() { throw 42; }

/// The process is in a session of its own, where a signal to the plug-in's does not reach it.
MISDEED leaveAProcessBehind() {
  if (fork() == 0) {
    setsid();
    std::signal(SIGTERM, SIG_IGN);
    while (true) pause();
  }
}

MISDEED misbehave() {
  if (isTold("crash")) writeToNowhere();
  if (isTold("abort")) giveUp();
  if (isTold("divide")) divideByZero();
  if (isTold("exit 0")) std::exit(0);
  if (isTold("exit 3")) std::exit(3);
  if (isTold("_exit")) _exit(5);
  if (isTold("kill")) kill(getpid(), SIGKILL);
  if (isTold("terminate")) kill(getpid(), SIGTERM);
  if (isTold("throw")) throw std::runtime_error("no such brush");
  if (isTold("throw a number")) throwANumber();
  if (isTold("throw a long text")) throw std::logic_error(std::string(300, 'x') + "\n\033[31m");
  if (isTold("spin")) spin();
  if (isTold("sleep")) pause();
  if (isTold("poll")) spinWithASleep();
  if (isTold("close all")) close_range(0, ~0U, 0);
  if (isTold("crash on a thread")) std::thread(writeToNowhere).join();
  if (isTold("throw on a thread")) std::thread(throwANumber).join();
  if (isTold("leave a process") || isTold("leave a process and crash")) leaveAProcessBehind();
  if (isTold("leave a process and crash")) writeToNowhere();
  if (isTold("print")) {
    std::puts("{\"t\":0,\"what\":\"forged\"}");
    if (write(STDOUT_FILENO, "\xFF raw\n", 6) != 6) std::abort();
    if (system("echo from a shell") != 0) std::abort();
  }
  if (isTold("change the folder") && chdir("/") != 0) std::abort();
}

namespace {

struct Lifetime {
  Lifetime() {
    if (isTold("crash while loading")) writeToNowhere();
    if (isTold("exit while loading")) std::exit(0);
    if (isTold("spin while loading")) spin();
    if (isTold("throw while loading")) throwANumber();
  }
  ~Lifetime() {
    if (isTold("crash while unloading")) writeToNowhere();
    if (isTold("spin while unloading")) spin();
  }
} lifetime;

}  // namespace

extern "C" __attribute__((visibility("default"))) int AutoPluginMain(const char*,
                                                                     const char* selector, void*) {
  if (std::strcmp(selector, "Startup") == 0) misbehave();
  return 0;
}
