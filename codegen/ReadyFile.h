// Writes recorded actions as a source file that compiles as it is: the ready form. The plain form
// (DumpDescriptor.h) is text for a developer to take over; this one is one C++17 translation unit
// with a function for each step, and RecordedSteps.h declares what it offers.
//
//   ReadyFile file(stream);
//   file.beginAction("My set", "My action", 1);
//   file.addStep({"Set", 1, true}, eventSet, descriptor);
//   file.finish();
//
// What the functions give to the host equals what the file was written from: the event, the keys
// and items in order, types and values. Two things have no procedure in the host's suites. A path
// item is put as an alias, which is also what the host hands out for it. An item of an unknown type
// becomes a comment; its step is then marked as incomplete in the table at the end, and plays
// nothing.
#pragma once

#include <PIActions.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "codegen/ReadyFunction.h"
#include "codegen/ReadyNames.h"
#include "codegen/SourceWriter.h"

/// A step of an action.
struct ReadyStep {
  std::string_view name;   ///< for people; may be empty
  std::size_t number = 1;  ///< in its action, from 1
  bool isEnabled = true;
};

/// Throws nothing but std::bad_alloc; errors of the stream are ignored. [main-thread]
class ReadyFile {
 public:
  /// Writes the head of the file. With a null `stream` the text is discarded.
  explicit ReadyFile(std::FILE* stream);
  ReadyFile(const ReadyFile&) = delete;
  ReadyFile& operator=(const ReadyFile&) = delete;

  /// Begins an action, to which the steps that follow belong. Names are UTF-8; a C string ends at
  /// their first zero byte. `number`: from 1, and different for each action.
  void beginAction(std::string_view set, std::string_view action, std::size_t number);

  /// Writes the function that plays `eventID` with `descriptor`, which remains the caller's and may
  /// be null. False if the step is incomplete: the host did not return a part, or has no procedure
  /// that puts it. REQUIRES: an action was begun.
  bool addStep(const ReadyStep& step, std::uint32_t eventID, PIActionDescriptor descriptor);

  /// Writes the tables and PlayAction.
  void finish();

 private:
  void endAction();

  SourceWriter out_;
  ReadyNames names_;
  ReadyFunction function_;
  std::string set_;
  std::string action_;
  std::size_t actionNumber_ = 0;
  int stepCount_ = 0;
  std::string steps_;    ///< the rows of the table of steps
  std::string actions_;  ///< the rows of the table of actions
};
