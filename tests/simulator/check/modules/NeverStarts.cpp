// Fails "start-and-stop": returns the parameter error from every call.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char*, void*) { return 0x5061726D; }
