// Runs work in a child process, so it leaves nothing behind and a crash becomes an error.
#pragma once

#include <functional>

#include "simulator/base/Log.h"

namespace simulator {

/// Runs `work` in a fork of this process and returns its result. Throws `std::runtime_error` with
/// the reason if `work` throws, ends the process, crashes, or does not come back in time, and
/// `TemporaryFileError` if `work` throws that.
/// REQUIRES: this process has one thread.
Json inChildProcess(const std::function<Json()>& work);

/// The time limit in seconds for each child that is started from now on, also by children. It
/// starts anew whenever a child of the child has ended.
void setChildTimeout(double seconds);

}  // namespace simulator
