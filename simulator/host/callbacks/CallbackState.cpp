#include "simulator/host/callbacks/CallbackState.h"

namespace simulator {

CallbackState& callbackState() {
  static CallbackState& state = *new CallbackState;
  return state;
}

}  // namespace simulator
