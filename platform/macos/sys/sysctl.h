// Kernel settings by name.
#pragma once

#include <cstddef>

extern "C" {

/// Reads the setting `name` into `oldp`, which has `*oldlenp` bytes, and sets `*oldlenp` to the
/// number of bytes written. Returns 0, or -1 if there is no such setting or it does not fit.
/// [not documented as safe]
int sysctlbyname(const char* name, void* oldp, std::size_t* oldlenp, void* newp,
                 std::size_t newlen);
}
