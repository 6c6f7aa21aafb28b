// The synthesized input that the plug-in sends to its host: what the simulated Mac expects, and
// what arrived on a real one.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace mrvmac {

enum class InputKind {
  kWheel,    ///< a scroll-wheel event
  kKey,      ///< a key that is pressed or released while the wheel turns
  kTypedKey  ///< a shortcut, posted to the main event queue
};

/// The modifiers of an `Input`. All other flags of a real event are left out.
inline constexpr std::uint64_t kOptionFlag = 0x00080000;
inline constexpr std::uint64_t kCommandFlag = 0x00100000;

struct Input {
  InputKind kind = InputKind::kWheel;
  std::int64_t vertical = 0;    ///< wheel: pixels
  std::int64_t horizontal = 0;  ///< wheel: pixels
  std::uint64_t flags = 0;      ///< wheel: the modifiers above
  std::uint32_t key = 0;        ///< keys: virtual key code
  bool down = false;            ///< keys: pressed or released

  bool operator==(const Input&) const = default;
};

/// The input in a few words, such as "wheel 1 0 with option" or "key 58 down". [any-thread]
std::string describe(const Input& input);

/// Thrown if a log cannot be used; `what` is one line: file, line, reason.
class BadLog : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// The inputs in a log that `mrvsim play` wrote; its other lines are passed over. `name` stands for
/// the file in errors. Throws `BadLog` if a line is not a line of such a log. [any-thread]
std::vector<Input> parseExpectedInputs(const std::string& text, const std::string& name);

/// How what arrived differs from what was expected. [any-thread]
struct Comparison {
  bool equal = true;
  /// One line for the first difference, empty if there is none: later ones follow from it.
  std::string difference;
};
Comparison compareInputs(const std::vector<Input>& expected, const std::vector<Input>& arrived);

/// The inputs of a kind, or those of all other kinds, in their order. [any-thread]
std::vector<Input> only(const std::vector<Input>& inputs, InputKind kind);
std::vector<Input> without(const std::vector<Input>& inputs, InputKind kind);

}  // namespace mrvmac
