// The spelling of identifiers in the statements of the generated code.
#pragma once

#include <cstdint>
#include <string_view>

#include "codegen/SourceWriter.h"
#include "codegen/Terminology.h"

/// The role of an identifier in a statement: the kind of its name, and the variable of the
/// generated function that holds it if it is a run-time identifier.
struct IDRole {
  const char* kind;
  std::string_view variable;
};

inline constexpr IDRole kKeyRole = {"key", "runtimeKeyID"};
inline constexpr IDRole kClassRole = {"class", "runtimeClassID"};
inline constexpr IDRole kObjectClassRole = {"class", "runtimeObjID"};
inline constexpr IDRole kEnumRole = {"enum", "runtimeEnumID"};
inline constexpr IDRole kEnumTypeRole = {"type", "runtimeTypeID"};
inline constexpr IDRole kUnitRole = {"unit", "runtimeUnitID"};
inline constexpr IDRole kEventRole = {"event", "runtimeEventID"};
inline constexpr IDRole kPropertyRole = {"key", "runtimePropID"};

/// Writes the statement that looks up the string ID `name` and stores it in `variable`, and the
/// error check.
void writeLookup(std::string_view name, std::string_view variable, SourceWriter& out);

/// One identifier in a statement. [main-thread]
class SpelledID {
 public:
  /// For a run-time identifier, writes the statement that looks it up.
  SpelledID(SourceWriter& out, std::uint32_t id, const IDRole& role);
  SpelledID(const SpelledID&) = delete;
  SpelledID& operator=(const SpelledID&) = delete;

  /// The variable of a run-time identifier, the name of any other. Valid while this object lives.
  IDName spelling() const { return spelling_; }

 private:
  char buffer_[kNameSize];
  IDName spelling_;
};
