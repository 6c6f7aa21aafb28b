#include "simulator/host/model/HostState.h"

namespace simulator {

HostState& hostState() {
  static HostState& state = *new HostState;
  return state;
}

}  // namespace simulator
