// How the ready form spells identifiers: those of the host's terminology by value, with their name
// and code as a comment, and run-time ones by a variable that is declared once for the whole text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// The names of one text. [main-thread]
class ReadyNames {
 public:
  /// Appends the spelling of `id`, of which `kind` is as in nameOfID. False, with nothing appended,
  /// if it is a run-time identifier that its name does not lead back to. REQUIRES: the control
  /// suite is held.
  bool append(std::uint32_t id, const char* kind, std::string& text);

  /// Begins a function: what it uses is noted from here on.
  void beginFunction();

  /// The declarations of the variables that were first used since the last call.
  std::string takeDeclarations() { return std::exchange(declarations_, {}); }

  /// The variables that the function uses, each once, in the order of their first use.
  const std::vector<std::string_view>& lookUps() const { return lookUps_; }

 private:
  struct Variable {
    std::string name;  ///< empty: the identifier is not a run-time one
    bool isExact = true;
    std::size_t function = 0;  ///< the last function that uses it
  };

  Variable& variable(std::uint32_t id);
  Variable declared(std::uint32_t id);
  std::string freeName(std::string_view string);

  std::unordered_map<std::uint32_t, Variable> variables_;
  std::unordered_set<std::string> taken_;
  std::size_t function_ = 0;
  std::string declarations_;
  std::vector<std::string_view> lookUps_;
};
