// Fails "minimum-system": needs macOS 11.0.
#include "EntryPoint.h"
