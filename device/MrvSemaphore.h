// A semaphore that is always free, kept for callers of its interface.
#pragma once

/// The process's one semaphore. Nothing is ever held back by it. [any-thread]
class MrvSemaphore {
 public:
  static MrvSemaphore& Instance();

  /// Always true.
  bool Acquire();
  void Release();

 private:
  MrvSemaphore() = default;
};
