// Removes temporary files and folders however this process ends, even if it is killed.
#pragma once

#include <sys/types.h>

#include <string>

namespace simulator {

/// A guard process, started with the first path, waits for the end of this one and then removes
/// what is still listed. [main-thread]
class Leftovers {
 public:
  /// Whether paths are guarded at all; they are not until this is called.
  void guard() { wanted_ = true; }

  /// Lists a file or folder, given by an absolute path.
  void add(const std::string& path);

  /// Takes a path off the list, because it was removed or is to stay.
  void forget(const std::string& path);

  /// Ends the guard, which removes what is listed, and waits for it.
  void finish();

  /// In a child of this process: leaves the guard to the parent.
  void leaveToParent();

  /// The guard's process; 0 if there is none.
  pid_t process() const { return process_; }

 private:
  bool start();
  void send(char what, const std::string& path);

  bool wanted_ = false;
  int pipe_ = -1;
  pid_t process_ = 0;
};

/// The list of this process. Never destroyed.
Leftovers& theLeftovers();

}  // namespace simulator
