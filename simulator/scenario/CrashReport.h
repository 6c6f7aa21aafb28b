// Where a process crashed: recorded by the process itself while it dies, read by its parent.
#pragma once

#include <csignal>
#include <cstdint>
#include <string>

namespace simulator {

/// Lies in memory that the parent shares.
struct CrashRecord {
  volatile std::sig_atomic_t signal = 0;  ///< 0: nothing was recorded
  std::uint64_t offset = 0;  ///< the place in the watched module, from its start; 0: not there
};

/// From now on a signal that ends this process because of a fault fills in the record first. The
/// place is the innermost one in the module that `watchModule` named. [main-thread]
void recordCrashes(CrashRecord& record);

/// Names the module, a file that was loaded with dlopen under this name. [main-thread]
void watchModule(const std::string& file);

/// The function of an ELF module that the offset from the module's start lies in, with its C++ name
/// spelt out; empty if the file has no symbol for it.
std::string functionAt(const std::string& module, std::uint64_t offset);

/// "SIGSEGV (Segmentation fault)".
std::string signalName(int signal);

}  // namespace simulator
