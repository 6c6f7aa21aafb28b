// Fails "exports": exports a second function.
#include "EntryPoint.h"

extern "C" __attribute__((visibility("default"))) int forgottenHelper() { return 1; }
