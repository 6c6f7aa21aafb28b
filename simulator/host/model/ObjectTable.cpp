#include "simulator/host/model/ObjectTable.h"

namespace simulator {

const char* objectKindName(ObjectTag tag) {
  switch (tag) {
    case ObjectTag::descriptor:
      return "descriptor";
    case ObjectTag::list:
      return "list";
    case ObjectTag::reference:
      return "reference";
    case ObjectTag::string:
      return "string";
    case ObjectTag::buffer:
      return "buffer";
    case ObjectTag::channelPort:
      return "channel port";
    case ObjectTag::reader:
      return "reader";
    case ObjectTag::writer:
      return "writer";
  }
  return "object";
}

}  // namespace simulator
