// Fails "start-and-stop": answers every call with the parameter error.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char*, void*) { return 0x5061726D; }
