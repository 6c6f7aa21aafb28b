// The host's preference to zoom with the scroll wheel, from its preferences file.
#pragma once

/// Returns true if the running host zooms with the scroll wheel; false if its preferences file does
/// not contain the preference, or cannot be opened, which also prints a line to standard output.
/// Throws what `PSMajorVersion` (HostVersion.h) throws. [main-thread]
bool readZoomWithScrollWheel();
