// Work in a process of its own, so that nothing of it is left and a crash is only an answer.
#pragma once

#include <functional>

#include "simulator/base/Log.h"

namespace simulator {

/// Runs `work` in a copy of this process and hands out what it returned. Throws
/// `std::runtime_error` with the reason where it threw, crashed, or took more than a minute.
/// REQUIRES: this process has one thread.
Json inChildProcess(const std::function<Json()>& work);

}  // namespace simulator
