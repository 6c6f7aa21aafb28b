// Which version of the host is running, and whether it is modal. [main-thread]
#pragma once

/// The host's version, asked once and then kept for the life of the process. On success writes the
/// major and minor version and returns the major one. Returns 0, with nothing written or kept,
/// where either pointer is null or the host does not answer; the next call asks again. A host of
/// major version 0 has it written and is asked again at every call.
/// Throws the host's code as a `std::uint32_t` where a suite cannot be acquired.
int PSMajorVersion(int* major, int* minor);

/// Whether the host says that it is modal; true also where it gives no answer. Throws like
/// `PSMajorVersion`.
bool PSIsModal();
