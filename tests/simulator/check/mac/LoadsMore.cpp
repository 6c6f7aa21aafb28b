// Fails "load-commands": loads a library that is not part of the system.
#include "EntryPoint.h"

extern "C" int elsewhere();

int useOfIt() { return elsewhere(); }
