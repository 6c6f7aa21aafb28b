// Reads an action file, one step at a time.
//
//     actionfiles::FileSource source("Actions.atn");
//     actionfiles::ActionFileReader reader(source);
//     while (const actionfiles::ActionHead* action = reader.nextAction()) {
//       while (const actionfiles::Step* step = reader.nextStep()) play(*action, *step);
//     }
//
// Only the current step is in memory, whatever the length of the file. What a file claims about
// itself is not trusted: memory is asked for only as bytes arrive.
#pragma once

#include <cstdint>
#include <string>

#include "actionfiles/ActionFile.h"
#include "actionfiles/ByteInput.h"
#include "actionfiles/ByteSource.h"
#include "actionfiles/DescriptorReader.h"

namespace actionfiles {

/// The version that is read. Version 12, an older one, has another layout.
inline constexpr std::uint32_t kVersion = 16;

/// Every member throws ActionFileError if the file cannot be read or does not have the layout of
/// ActionFile.h: if it ends early or goes on after the last action, has an unknown version, item
/// type or form, or nests descriptors and lists deeper than kDeepestNesting. After an exception the
/// reader is of no further use. [any-thread, one at a time]
class ActionFileReader {
 public:
  /// Reads the head of the set. `source` must outlive the reader.
  explicit ActionFileReader(ByteSource& source);

  const SetHead& set() const { return set_; }

  /// The head of the next action, valid until the next call; skips steps of the current action that
  /// were not read. null after the last one, if the file ends there.
  const ActionHead* nextAction();

  /// The next step of the current action, valid until the next call of either function; the caller
  /// may move from it. null after the last one, and before the first action.
  Step* nextStep();

  /// The number of bytes read so far.
  std::uint64_t offset() const { return in_.offset(); }

 private:
  void readVersion();
  void readEvent();

  ByteInput in_;
  DescriptorReader parts_;
  SetHead set_;
  ActionHead action_;
  Step step_;
  std::string buffer_;
  std::uint32_t actionsLeft_ = 0;
  std::uint32_t stepsLeft_ = 0;
};

}  // namespace actionfiles
