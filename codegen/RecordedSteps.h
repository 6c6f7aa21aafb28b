// What the ready form of generated text is made of: see ReadyFile.h. Generated text includes this
// header and is linked with this folder. C++17.
//
// Functions that return an int return a host error, 0 for success. They throw the error as
// std::uint32_t if a suite cannot be acquired. [main-thread]
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <PIActions.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "codegen/HostValues.h"
#include "hostutil/CFObject.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

/// An action of a generated file.
struct RecordedAction {
  const char* set;  ///< the names, in UTF-8
  const char* action;
  int steps;  ///< the number of its steps, with those that are not enabled
};

/// A step of a generated file, and the function that plays it.
struct RecordedStep {
  const char* set;
  const char* action;
  const char* step;
  int (*play)();
  bool isEnabled;   ///< PlayAction leaves the other ones out
  bool isComplete;  ///< false if the text lacks a part; `play` then plays nothing and fails
};

extern "C" {
/// The actions of the generated file, in order; the last entry is {nullptr, nullptr, 0}.
extern const RecordedAction kRecordedActions[];

/// Plays the enabled steps of the first action of that name in the first set of that name, in
/// order, until one fails. Returns its error, 0 for success, -1715 if there is no such action,
/// errPlugInHostInsufficient (-30900) from a step that is not complete. Throws nothing: a suite
/// that cannot be acquired is the host's error. `setName`, `actionName`: in UTF-8.
int PlayAction(const char* setName, const char* actionName);
}

/// What PlayAction of a generated file does. `steps` holds the steps of all actions, in order.
int playRecordedAction(const RecordedAction* actions, const RecordedStep* steps,
                       const char* setName, const char* actionName) noexcept;

/// A string ID, which the host gives a number when it is first asked for. The number stays the same
/// as long as the host runs.
class RuntimeID {
 public:
  /// REQUIRES: `name` outlives the object.
  constexpr explicit RuntimeID(const char* name) : name_(name) {}

  /// Asks the host for the number, unless it is known.
  int lookUp();

  /// The number. REQUIRES: lookUp has returned 0.
  operator DescriptorTypeID() const { return id_; }

 private:
  const char* name_;
  DescriptorTypeID id_ = 0;
  bool isKnown_ = false;
};

/// Looks up each of `ids`, up to the first that fails.
int lookUp(std::initializer_list<RuntimeID*> ids);

using OwnedBookmark = CFObject<CFDataRef>;

/// Make an alias or bookmark data of a file; fnfErr if the file does not exist.
int aliasOfPath(const char* path, OwnedAlias& alias);
int bookmarkOfPath(const char* path, OwnedBookmark& bookmark);

/// Make an alias or bookmark data of the bytes that the host once stored for it.
int aliasOfBytes(const char* bytes, std::size_t size, OwnedAlias& alias);
int bookmarkOfBytes(const char* bytes, std::size_t size, OwnedBookmark& bookmark);

/// Makes a text of any UTF-16 units, also of those that a C string cannot hold.
int textOfUnits(const char16_t* units, std::size_t count, OwnedText& text);

/// The number with this representation: one that has no literal, such as a NaN. [any-thread]
double realOfBits(std::uint64_t bits);
