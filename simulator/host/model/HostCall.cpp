#include "simulator/host/model/HostCall.h"

#include <fmt/format.h>

#include <algorithm>

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

void copyText(std::string_view text, char* destination, std::uint32_t size) {
  if (size == 0) throw CallError{paramErr};
  const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  std::copy_n(text.begin(), length, destination);
  destination[length] = '\0';
}

}  // namespace simulator
