// Records calls between the plug-in and the simulated host.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/Machine.h"

namespace testing_support {

/// Gives the plug-in forwarding copies of the host's action suites. Construct it after the Machine;
/// at most one may exist.
///
/// Objects are named after their origin: "reference" and "descriptor" come from Make, "answer" from
/// Get, "result" from Play, and a key such as "Brsh" from reading the object under that key. A
/// second object of the same origin is "answer 2", and so on.
class RecordingHost {
 public:
  RecordingHost();
  ~RecordingHost();
  RecordingHost(const RecordingHost&) = delete;
  RecordingHost& operator=(const RecordingHost&) = delete;

  std::vector<std::string> made;   ///< names, in the order of creation
  std::vector<std::string> freed;  ///< names, in the order of freeing

  /// The limits of all GetString calls.
  std::vector<std::uint32_t> textLimits;

  /// The buffer sizes of all TypeIDToStringID calls.
  std::vector<std::uint32_t> typeNameSizes;

  /// If not 0, TypeIDToStringID returns this error after converting.
  std::int16_t typeNameError = 0;

  /// Makes the next `times` acquisitions of the named suite fail with `error`.
  void refuse(const std::string& suite, std::int32_t error, int times);

  /// Clears the records and makes the plug-in release every suite.
  void startOver();

  // Called by the forwarding procedures.
  void noteMade(const void* object, const std::string& name);
  void noteFreed(const void* object);
  std::int32_t refusal(const std::string& suite);

 private:
  struct Live {
    const void* object;
    std::string name;
  };

  SPBasicSuite* host_;
  std::vector<Live> live_;
  std::string refusedSuite_;
  std::int32_t refusalError_ = 0;
  int refusals_ = 0;
};

/// Returns the names in `order` that are also in `made`, in the order of `order`.
std::vector<std::string> keepMade(const std::vector<std::string>& order,
                                  const std::vector<std::string>& made);

/// Calls `call` and returns what it returned or threw.
template <class Call>
Outcome attempt(const Call& call) {
  Outcome outcome;
  try {
    outcome.result = call();
  } catch (std::uint32_t code) {
    outcome.threw = true;
    outcome.thrown = code;
  }
  return outcome;
}

}  // namespace testing_support
