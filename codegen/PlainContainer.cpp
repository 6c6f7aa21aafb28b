#include "codegen/PlainContainer.h"

#include "codegen/ContainerKinds.h"
#include "codegen/ContainerWalker.h"
#include "codegen/PlainItems.h"
#include "codegen/SourceWriter.h"

void writeDescriptor(PIActionDescriptor descriptor, SourceWriter& out) {
  PlainOutput output(out);
  ContainerWalk<PlainItems>(output).run<DescriptorKind>(descriptor);
}

void writeList(PIActionList list, SourceWriter& out) {
  PlainOutput output(out);
  ContainerWalk<PlainItems>(output).run<ListKind>(list);
}
