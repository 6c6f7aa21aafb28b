// The host's basic suite, which provides all other suites. [main-thread]
#pragma once

#include <SPBasic.h>
#include <SPErrorCodes.h>
#include <SPTypes.h>

#include <cstdint>

/// The host's basic suite, null until the host's first call; every call refreshes it.
extern SPBasicSuite* sSPBasic;

/// Acquires a suite into `*suite` and returns the host's code, 0 for success. If there is no basic
/// suite, returns the parameter error 0x5061726D and leaves `*suite` unchanged.
std::int32_t acquireSuite(const char* name, std::int32_t version, const void** suite);

/// Releases a suite. Returns false, having done nothing, if there is no basic suite; the host's own
/// error is ignored.
bool releaseSuite(const char* name, std::int32_t version);
