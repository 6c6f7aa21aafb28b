#include "TestHost.h"

extern "C" int elsewhere();

EXPORT int asksElsewhere() { return elsewhere(); }
