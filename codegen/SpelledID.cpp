#include "codegen/SpelledID.h"

SpelledID::SpelledID(SourceWriter& out, std::uint32_t id, const IDRole& role) {
  spelling_ = NameOfID(id, role.kind, buffer_);
  if (!IsRuntimeID(id)) return;
  out.indentedLine("error = sPSActionControl->StringIDToTypeID(", StringLiteral{spelling_}, ", &",
                   role.variable, ");");
  out.errorCheck();
  spelling_ = role.variable;
}
