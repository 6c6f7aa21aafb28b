#include "codegen/Walkers.h"

#include <cstdio>

#include "codegen/HostValues.h"
#include "codegen/PlainContainer.h"
#include "codegen/PlainReference.h"
#include "codegen/SourceWriter.h"

namespace {

template <class Container>
void dumpInfo(Container container, std::FILE* stream, void (*write)(Container, SourceWriter&)) {
  if (!holdActionSuites()) return;
  SourceWriter out(stream);
  write(container, out);
}

}  // namespace

void DumpInfoFromDescriptor(PIActionDescriptor descriptor, std::FILE* stream) {
  dumpInfo(descriptor, stream, writeDescriptor);
}

void DumpInfoFromList(PIActionList list, std::FILE* stream) { dumpInfo(list, stream, writeList); }

void DumpInfoFromReference(PIActionReference reference, std::FILE* stream) {
  dumpInfo(reference, stream, writeWholeReference);
}
