// Fails "segment-rights": may write to its code.
#include "EntryPoint.h"
