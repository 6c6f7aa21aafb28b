// What a process that plays a scenario says about the plug-in.
#pragma once

#include <string>

namespace simulator {

/// The type of the exception that is being handled, and what it says. REQUIRES: one is.
std::string describeException();

/// Replaces the home folder's name, which differs each time, so logs can be compared.
std::string withHomeAsTilde(std::string text, const std::string& home);

}  // namespace simulator
