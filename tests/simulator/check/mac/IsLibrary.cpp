// Fails "file-type": is linked as a dynamic library.
#include "EntryPoint.h"
