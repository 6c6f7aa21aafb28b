#include "simulator/host/HostCall.h"

#include <fmt/format.h>

#include "simulator/Log.h"

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

}  // namespace simulator
