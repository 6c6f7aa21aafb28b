#include "simulator/host/ObjectTable.h"

#include "simulator/host/CallbackState.h"

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
    case ObjectKind<BufferID>::tag:
      return "buffer";
    case ObjectKind<PIChannelPort>::tag:
      return "channel port";
    case ObjectKind<PIReadDescriptor>::tag:
      return "reader";
    case ObjectKind<PIWriteDescriptor>::tag:
      return "writer";
    default:
      return "object";
  }
}

}  // namespace simulator
