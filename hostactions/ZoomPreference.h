// The host's preference to zoom with the scroll wheel, from its preferences file.
#pragma once

/// True if the running host zooms with the scroll wheel. False, with a line on standard output, if
/// its preferences file cannot be opened, and false if the file does not hold the preference.
/// Throws what the version query (HostVersion.h) throws. [main-thread]
bool readZoomWithScrollWheel();
