// Whether a record of the host's callbacks can be used.
#pragma once

#include <PIGeneral.h>

/// Whether the handle procedures are there: version 1, at least 8 procedures counted, the first
/// four present. A newer record is not usable and sets `*newerVersion`, where that is not null.
bool HostHandleProcsAvailable(const HandleProcs* procs, bool* newerVersion);
