// Signals that ask the program to end: they become an exception, so everything is tidied up.
#pragma once

namespace simulator {

/// Thrown after SIGINT, SIGTERM, SIGHUP or SIGQUIT. Not a `std::exception`, because it is not an
/// error to report.
struct Interrupted {
  int signal;
};

/// From now on these signals are only noted, unless they were ignored when the program started.
/// SIGPIPE and SIGXFSZ are ignored, so writing fails with an error code instead. [main-thread]
void noteInterrupts();

/// Throws `Interrupted` if a signal was noted. Call it whenever a system call fails with EINTR, and
/// before each one that may block. [main-thread]
void throwIfInterrupted();

/// The signal that was noted has been seen to: only a further one makes `throwIfInterrupted` throw.
/// For a program that keeps something before it ends. [main-thread]
void settleInterrupt();

/// Undoes `noteInterrupts`, in a child process.
void forgetInterrupts();

}  // namespace simulator
