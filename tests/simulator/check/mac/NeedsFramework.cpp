// Fails "weak-framework".
#include "EntryPoint.h"
