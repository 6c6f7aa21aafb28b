// Fails "weak-framework": its load command for the device framework is not weak.
#include "EntryPoint.h"
