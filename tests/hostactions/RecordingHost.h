// Stands between the plug-in and the simulated host and notes what passes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/Machine.h"

namespace testing_support {

/// Hands out forwarding copies of the host's action suites. To be made after the Machine; one at a
/// time.
///
/// Objects are named by where they come from: "reference" and "descriptor" were made, "answer" was
/// got, "result" was left by a play, "Brsh" was read from under that key. A second one of the same
/// kind is "answer 2", and so on.
class RecordingHost {
 public:
  RecordingHost();
  ~RecordingHost();
  RecordingHost(const RecordingHost&) = delete;
  RecordingHost& operator=(const RecordingHost&) = delete;

  std::vector<std::string> made;   ///< in the order in which they were handed out
  std::vector<std::string> freed;  ///< in the order in which they were freed

  /// The limits with which texts were read.
  std::vector<std::uint32_t> textLimits;

  /// The sizes of the buffers for the names of types, and what the conversions return after they
  /// have been done; 0: what the host returns.
  std::vector<std::uint32_t> typeNameSizes;
  std::int16_t typeNameError = 0;

  /// Makes the next `times` acquisitions of the suite of that name fail with `error`.
  void refuse(const std::string& suite, std::int32_t error, int times);

  /// Forgets what was noted, and has the plug-in give every suite back.
  void startOver();

  // For the forwarding procedures.
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

/// Those of `order` that are among `made`, in the order of `order`.
std::vector<std::string> amongThose(const std::vector<std::string>& order,
                                    const std::vector<std::string>& made);

/// Runs `call`, and tells what it returned or threw.
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
