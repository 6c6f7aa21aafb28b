// The inputs that mrvmac expects of its own scenario.
#pragma once

#include <vector>

#include "mac/Inputs.h"
#include "tests/support/Process.h"

namespace mrvmac {

inline std::vector<Input> probeInputs() {
  const std::string file = MRV_MAC "/probe.expected.jsonl";
  return parseExpectedInputs(testing_support::readFile(file), file);
}

}  // namespace mrvmac
