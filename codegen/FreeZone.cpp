#include "codegen/FreeZone.h"

#include <cstdio>
#include <string>
#include <string_view>

#include "codegen/SourceWriter.h"
#include "codegen/VariableNames.h"

namespace {

/// The procedure that releases a variable whose name begins with `letter`; empty if there is none.
std::string_view releaseProcedure(char letter) {
  switch (letter) {
    case 'a':
      return "sPSHandle->DisposeRegularHandle";
    case 'b':
      return "CFRelease";
    case 'd':
      return "sPSActionDescriptor->Free";
    case 'l':
      return "sPSActionList->Free";
    case 'r':
      return "sPSActionReference->Free";
    default:
      return "";
  }
}

}  // namespace

void FreeZone::Add(PIActionReference reference) { names.push_back(declaredName("ref", reference)); }

void FreeZone::Add(PIActionList list) { names.push_back(declaredName("list", list)); }

void FreeZone::Add(PIActionDescriptor descriptor) {
  names.push_back(declaredName("desc", descriptor));
}

void FreeZone::Add(AliasHandle) { names.emplace_back("aliasValue"); }

void FreeZone::Add(Handle) { names.emplace_back("aliasValue"); }

void FreeZone::Add(CFDataRef) { names.emplace_back("bookmarkValue"); }

void FreeZone::Output(std::FILE* stream) const {
  SourceWriter out(stream);
  write(out);
}

void FreeZone::write(SourceWriter& out) const {
  for (const std::string& name : names) {
    const std::string_view procedure = releaseProcedure(name.empty() ? '\0' : name.front());
    if (procedure.empty()) continue;
    out.indentedLine("if (", name, " != NULL) ", procedure, "(", name, ");");
  }
}
