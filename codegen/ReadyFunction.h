// The body of one function of the ready form, while it is written.
//
// Containers lie in arrays of owners, one for descriptors and one for lists: an element for each
// level of nesting, used again for the next container on that level. So a function has few
// variables and no nested blocks however long and deep a descriptor is, and whatever it made is
// freed on every path. A long function is cut into parts, which take the arrays: the time that
// compilers take grows faster than the length of a function.
#pragma once

#include <PIActions.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "codegen/ContainerKinds.h"
#include "codegen/ReadyNames.h"
#include "codegen/SourceWriter.h"

/// The owners of values that are no containers, each declared if the function uses it.
struct UsedOwners {
  bool reference = false;
  bool alias = false;
  bool bookmark = false;
  bool text = false;
};

/// [main-thread]
class ReadyFunction {
 public:
  /// Writes to `out`, which outlives the function, as does `names`.
  ReadyFunction(ReadyNames& names, SourceWriter& out) : names_(names), out_(out), writer_(body_) {}
  ReadyFunction(const ReadyFunction&) = delete;
  ReadyFunction& operator=(const ReadyFunction&) = delete;

  /// Forgets the last function and begins `name`.
  void begin(std::string name);

  /// Ends a part here if it is long enough. Called between two statements that share no owner.
  void mayCut();

  // What ContainerWalk asks for.
  void enter() {}
  void leave() {}

  /// Begins a container of `Kind` inside the innermost one that is open, and returns its variable.
  template <class Kind>
  std::string open() {
    Slots& slots = slotsOf<Kind>();
    if (slots.open == slots.most) ++slots.most;
    return variable<Kind>(slots.open++);
  }

  /// Ends the innermost container of `Kind`, and returns its variable.
  template <class Kind>
  std::string close() {
    return variable<Kind>(--slotsOf<Kind>().open);
  }

  /// The spelling of an identifier after `before`; marks the function incomplete if it has none.
  std::string spelling(std::uint32_t identifier, const char* kind, std::string_view before = "");

  /// Writes "error = call;" and the check; the call consists of the parts.
  template <class... Parts>
  void statement(const Parts&... parts) {
    writer_.line("  error = ", parts..., ";");
    writer_.line(kCheck);
    ++statements_;
  }

  /// Writes a comment about a part that the text lacks, and marks the function incomplete.
  template <class... Parts>
  void lacks(const Parts&... parts) {
    isComplete_ = false;
    writer_.line("  // Incomplete: ", parts..., ".");
  }

  template <class... Parts>
  void comment(const Parts&... parts) {
    writer_.line("  // ", parts...);
  }

  UsedOwners& owners() { return owners_; }
  bool isComplete() const { return isComplete_; }

  const std::string& name() const { return name_; }

  /// Ends the function, which plays `event` with the container that was opened first, if there was
  /// one. `comment` is the line before the function, without its slashes.
  void end(std::string_view comment, std::uint32_t event);

 private:
  struct Slots {
    std::size_t open = 0;
    std::size_t most = 0;
  };

  template <class Kind>
  Slots& slotsOf();

  template <class Kind>
  static std::string variable(std::size_t slot) {
    return std::string(Kind::kVariable) + "[" + std::to_string(slot) + "]";
  }

  static constexpr std::string_view kCheck = "  if (error != 0) return error;";

  void cut();
  std::string partName(std::size_t part) const;
  std::string ownersOfBody() const;
  void writePlay(std::uint32_t event);
  void writeLookUps() const;
  void writeArrays() const;
  void writeCalls() const;

  ReadyNames& names_;
  SourceWriter& out_;
  std::string name_;
  std::size_t parts_ = 0;       ///< the number of functions that were cut off
  std::size_t statements_ = 0;  ///< in the body
  std::string body_;
  SourceWriter writer_;
  Slots descriptors_;
  Slots lists_;
  UsedOwners owners_;
  bool isComplete_ = true;
};

template <>
inline ReadyFunction::Slots& ReadyFunction::slotsOf<DescriptorKind>() {
  return descriptors_;
}

template <>
inline ReadyFunction::Slots& ReadyFunction::slotsOf<ListKind>() {
  return lists_;
}
