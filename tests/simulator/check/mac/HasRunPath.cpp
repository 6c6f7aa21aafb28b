// Fails "run-paths": looks for libraries in a folder of the build machine.
#include "EntryPoint.h"
