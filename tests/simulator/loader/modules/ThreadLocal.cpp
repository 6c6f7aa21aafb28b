#include "TestHost.h"

namespace {

thread_local int perThread = 5;

}  // namespace

EXPORT int* ownNumber() { return &perThread; }
