// In a source of its own, so that a program can link an alert that it shows itself.
#include "hostutil/HostUtilities.h"

int ShowVersionAlert(const unsigned char*) { return 0; }
