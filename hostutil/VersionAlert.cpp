// In a separate source file, because a program may define this function itself.
#include "hostutil/HostUtilities.h"

int ShowVersionAlert(const unsigned char*) { return 0; }
