// The variables that a generated function must release at its end.
#pragma once

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>
#include <PIActions.h>

#include <cstdio>
#include <string>
#include <vector>

class SourceWriter;

/// Names of variables, in the order in which the generated code fills them. A name that is added
/// twice is released twice. [main-thread]
class FreeZone {
 public:
  FreeZone() = default;
  FreeZone(const FreeZone&) = delete;
  FreeZone& operator=(const FreeZone&) = delete;

  /// Adds the variable of a container: "ref", "list" or "desc", then the handle's value as 16
  /// hexadecimal digits.
  void Add(PIActionReference reference);
  void Add(PIActionList list);
  void Add(PIActionDescriptor descriptor);

  /// Adds "aliasValue", the variable of every alias. The host's suites pass aliases as plain
  /// handles.
  void Add(AliasHandle alias);
  void Add(Handle alias);

  /// Adds "bookmarkValue", the variable of every bookmark.
  void Add(CFDataRef bookmark);

  /// Writes one indented line for each name, which releases the variable; the name's first letter
  /// selects the procedure. Names with an unknown first letter are skipped. With a null `stream`
  /// nothing is written.
  void Output(std::FILE* stream) const;

  /// The same, to `out`.
  void write(SourceWriter& out) const;

  std::vector<std::string> names;
};
