// Succeeds if the terminology has a name. Needs the host's interface, and no host.
#include <cstring>

#include "codegen/RecordedSteps.h"
#include "codegen/Terminology.h"

int main() {
  char name[kNameSize];
  LongToStr(0x73657464, "event", name);
  return std::strcmp(name, "eventSet") == 0 ? 0 : 1;
}
