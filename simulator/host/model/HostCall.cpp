#include "simulator/host/model/HostCall.h"

#include <fmt/format.h>

#include <algorithm>

#include "simulator/base/Faults.h"
#include "simulator/base/Log.h"

namespace simulator {

HostEntry::HostEntry(SuiteId suite, const char* procedure) : lock_(hostState().mutex) {
  const HostState& state = hostState();
  if (std::this_thread::get_id() != state.mainThread) {
    theLog().misuse(fmt::format("{}: called on another thread than the main one", procedure));
  }
  if (suite != SuiteId::basic && state.holds[static_cast<std::size_t>(suite)] == 0) {
    theLog().misuse(fmt::format("{}: called through a suite that is not held", procedure));
  }
}

std::int32_t outcome(ProcedureBody body) {
  try {
    body();
    return 0;
  } catch (const CallError& failure) {
    return failure.error;
  }
}

std::int32_t callResult(SuiteId suite, const char* procedure, ProcedureBody body) {
  const HostEntry entry(suite, procedure);
  if (const auto error = theFaults().strike(procedure)) return *error;
  return outcome(body);
}

std::int32_t releaseResult(SuiteId suite, const char* procedure, ProcedureBody body) {
  const HostEntry entry(suite, procedure);
  const auto error = theFaults().strike(procedure);
  const std::int32_t own = outcome(body);
  return error.value_or(own);
}

void copyText(std::string_view text, char* destination, std::uint32_t size) {
  if (size == 0) throw CallError{paramErr};
  const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  std::copy_n(text.begin(), length, destination);
  destination[length] = '\0';
}

}  // namespace simulator
