// The owner of an open C stdio stream. [any-thread]
#pragma once

#include <cstdio>

#include "hostutil/Owned.h"

/// Null if the file could not be opened.
using File = Owned<std::FILE*, std::fclose>;
