// The version of the program.
#pragma once

namespace simulator {

/// "mrvsim 1.0.0", followed by the commit in brackets if the sources are in a repository.
extern const char kVersion[];

}  // namespace simulator
