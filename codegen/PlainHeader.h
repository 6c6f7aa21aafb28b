// The statements with which the plain form begins a container.
#pragma once

#include <string>
#include <string_view>

#include "codegen/DumpState.h"
#include "codegen/SourceWriter.h"
#include "codegen/VariableNames.h"

inline constexpr std::string_view kMoveToTop = "// Move this to the top of the routine!";

/// Writes the statements that declare and make a container. Adds it to `freeZone`, if that is set,
/// for release at the end of the generated function.
template <class Kind>
void writeContainerHeader(typename Kind::Container container, SourceWriter& out) {
  const std::string variable = declaredName(Kind::kVariable, container);
  out.indentedLine(kMoveToTop);
  out.indentedLine(Kind::kType, " ", variable, " = NULL;");
  out.indentedLine("error = ", Kind::kSuite, "->Make(&", variable, ");");
  out.errorCheck();
  if (freeZone != nullptr) freeZone->Add(container);
}
