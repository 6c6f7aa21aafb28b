#include "simulator/host/ObjectTable.h"

namespace simulator {

const char* objectKindName(std::uintptr_t tag) {
  switch (tag) {
    case ObjectKind<PIActionDescriptor>::tag:
      return "descriptor";
    case ObjectKind<PIActionList>::tag:
      return "list";
    case ObjectKind<PIActionReference>::tag:
      return "reference";
    case ObjectKind<ASZString>::tag:
      return "string";
    default:
      return "object";
  }
}

}  // namespace simulator
