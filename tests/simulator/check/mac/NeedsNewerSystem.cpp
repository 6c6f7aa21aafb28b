// Fails "minimum-system".
#include "EntryPoint.h"
