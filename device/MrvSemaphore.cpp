#include "device/MrvSemaphore.h"

MrvSemaphore& MrvSemaphore::Instance() {
  static MrvSemaphore semaphore;
  return semaphore;
}

bool MrvSemaphore::Acquire() { return true; }

void MrvSemaphore::Release() {}
