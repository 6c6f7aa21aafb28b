// The host's basic suite, through which every other suite is had. [main-thread]
#pragma once

#include <SPBasic.h>
#include <SPErrorCodes.h>
#include <SPTypes.h>

#include <cstdint>

/// The host's basic suite, null until the host's first call; every call refreshes it.
extern SPBasicSuite* sSPBasic;

/// Acquires a suite into `*suite` and returns the host's code; the parameter error, with `*suite`
/// left alone, where there is no basic suite.
std::int32_t acquireSuite(const char* name, std::int32_t version, const void** suite);

/// Releases a suite; false, with nothing done, where there is no basic suite.
bool releaseSuite(const char* name, std::int32_t version);
