#include <mutex>

#include "TestHost.h"

namespace {

std::mutex guard;

}  // namespace

EXPORT int takesLock() {
  guard.lock();
  guard.unlock();
  return 1;
}
