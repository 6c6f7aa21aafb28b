// A semaphore that never blocks, kept for existing callers.
#pragma once

/// The process's one semaphore. It has no state and never blocks. [any-thread]
class MrvSemaphore {
 public:
  static MrvSemaphore& Instance();

  /// Returns true.
  bool Acquire();

  /// Does nothing.
  void Release();

 private:
  MrvSemaphore() = default;
};
