// The user's preferences folder, which contains the host's settings folder for each version.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

/// Copies the folder's path, in Mac Roman and without a trailing slash, to `path`, a buffer of
/// `size` bytes. Creates the folder if it does not exist. The path is empty if the folder cannot be
/// found or the path and its terminator do not fit. [main-thread]
/// REQUIRES: `size` is at least 1.
void copyPreferencesFolderPath(char* path, CFIndex size);
