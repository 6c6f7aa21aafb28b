// The host's version, and whether the host is modal. [main-thread]
#pragma once

/// Writes the host's major and minor version and returns the major version. The version is cached
/// for the life of the process. Returns 0 and writes nothing if either pointer is null or the host
/// does not report a version; the next call then asks again. Major version 0 is written but not
/// cached. A number that the host cannot read is 0.
/// Throws the host's code as a `std::uint32_t` if a suite cannot be acquired.
int PSMajorVersion(int* major, int* minor);

/// Returns whether the host reports that it is modal; true also if it does not answer or has no
/// procedure to ask. Throws what `PSMajorVersion` throws.
bool PSIsModal();
