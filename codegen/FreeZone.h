// The variables that a generated function has to release at its end.
#pragma once

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>
#include <PIActions.h>

#include <cstdio>
#include <string>
#include <vector>

class SourceWriter;

/// Names of variables in the order in which the generated code makes what they hold. A name that
/// was added twice is released twice. [main-thread]
class FreeZone {
 public:
  FreeZone() = default;
  FreeZone(const FreeZone&) = delete;
  FreeZone& operator=(const FreeZone&) = delete;

  /// Adds the variable of a container: "ref", "list" or "desc" and the handle's value as 16
  /// hexadecimal digits.
  void Add(PIActionReference reference);
  void Add(PIActionList list);
  void Add(PIActionDescriptor descriptor);

  /// Adds "aliasValue", whatever the alias is. The host's suites have aliases as plain handles.
  void Add(AliasHandle alias);
  void Add(Handle alias);

  /// Adds "bookmarkValue", whatever the bookmark is.
  void Add(CFDataRef bookmark);

  /// Writes one indented line for each name, which releases the variable as the name's first letter
  /// asks for; nothing for a letter that no variable begins with, or where `stream` is null.
  void Output(std::FILE* stream) const;

  /// The same, to a text that is being written.
  void write(SourceWriter& out) const;

  std::vector<std::string> names;
};
