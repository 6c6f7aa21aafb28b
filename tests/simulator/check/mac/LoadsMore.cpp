// Fails "load-commands".
#include "EntryPoint.h"

extern "C" int elsewhere();

int useOfIt() { return elsewhere(); }
