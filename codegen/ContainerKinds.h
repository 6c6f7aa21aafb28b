// The three kinds of containers: their types, their suites and their names in the generated code.
// A descriptor's getters select an item by its key, a list's by its index.
#pragma once

#include <string>
#include <string_view>

#include "codegen/DumpState.h"
#include "codegen/HostValues.h"
#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"
#include "codegen/VariableNames.h"

struct DescriptorKind {
  using Container = PIActionDescriptor;
  static constexpr std::string_view kType = "PIActionDescriptor";
  static constexpr std::string_view kCall = "error = sPSActionDescriptor->";
  static constexpr std::string_view kVariable = "desc";
  static auto suite() { return sPSActionDescriptor.operator->(); }
  static std::uint32_t selector(DescriptorKeyID key, std::uint32_t) { return key; }
  static bool readKey(Container descriptor, std::uint32_t index, DescriptorKeyID* key) {
    return suite()->GetKey(descriptor, index, key) == 0;
  }

  using Key = SpelledID;
  static void writeKey(const Key& key, SourceWriter& out) { out.write(", ", key.spelling()); }
};

struct ListKind {
  using Container = PIActionList;
  static constexpr std::string_view kType = "PIActionList";
  static constexpr std::string_view kCall = "error = sPSActionList->";
  static constexpr std::string_view kVariable = "list";
  static auto suite() { return sPSActionList.operator->(); }
  static std::uint32_t selector(DescriptorKeyID, std::uint32_t index) { return index; }
  static bool readKey(Container, std::uint32_t, DescriptorKeyID*) { return true; }

  /// List items have no key: nothing is looked up or written.
  struct Key {
    Key(SourceWriter&, DescriptorKeyID, const IDRole&) {}
  };
  static void writeKey(const Key&, SourceWriter&) {}
};

struct ReferenceKind {
  using Container = PIActionReference;
  static constexpr std::string_view kType = "PIActionReference";
  static constexpr std::string_view kCall = "error = sPSActionReference->";
  static constexpr std::string_view kVariable = "ref";
  static auto suite() { return sPSActionReference.operator->(); }
};

inline constexpr std::string_view kMoveToTop = "// Move this to the top of the routine!";

/// Writes the statements that declare and make a container. Adds it to `freeZone`, if that is set,
/// for release at the end of the generated function.
template <class Kind>
void writeContainerHeader(typename Kind::Container container, SourceWriter& out) {
  const std::string variable = declaredName(Kind::kVariable, container);
  out.indentedLine(kMoveToTop);
  out.indentedLine(Kind::kType, " ", variable, " = NULL;");
  out.indentedLine(Kind::kCall, "Make(&", variable, ");");
  out.errorCheck();
  if (freeZone != nullptr) freeZone->Add(container);
}
