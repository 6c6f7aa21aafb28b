#include "TestHost.h"

extern "C" int testAddedLater();

EXPORT int asksForMore() { return testAddedLater(); }
