// The user's preferences folder, below which the host keeps a settings folder for each version.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

/// Copies the folder's path, Mac Roman and without a trailing slash, into `path` of `size` bytes,
/// terminating zero included. A path that does not fit, or a folder that is not found, leaves it
/// empty. REQUIRES: `size` is at least 1. [main-thread]
void copyPreferencesFolderPath(char* path, CFIndex size);
