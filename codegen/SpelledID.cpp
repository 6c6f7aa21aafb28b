#include "codegen/SpelledID.h"

#include <cstdint>
#include <string_view>

#include "codegen/SourceWriter.h"
#include "codegen/Terminology.h"

void writeLookup(std::string_view name, std::string_view variable, SourceWriter& out) {
  out.indentedLine("error = sPSActionControl->StringIDToTypeID(", StringLiteral{name}, ", &",
                   variable, ");");
  out.errorCheck();
}

SpelledID::SpelledID(SourceWriter& out, std::uint32_t id, const IDRole& role)
    : spelling_(nameOfID(id, role.kind, buffer_)) {
  if (!isRuntimeID(id)) return;
  writeLookup(spelling_.text, role.variable, out);
  spelling_ = {role.variable, NameKind::kVariable};
}
