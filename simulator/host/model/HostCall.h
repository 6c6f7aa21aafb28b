// What every procedure of a suite does on entry and exit.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "simulator/base/Faults.h"
#include "simulator/host/model/HostErrors.h"
#include "simulator/host/model/HostState.h"

namespace simulator {

/// Held during the call of one procedure: serialises the host, and logs a misuse if the call comes
/// on a thread other than the main one or through a suite that is not held.
class HostEntry {
 public:
  HostEntry(SuiteId suite, const char* procedure);

 private:
  std::lock_guard<std::recursive_mutex> lock_;
};

/// Runs `body` and returns 0, or the error of the CallError that it throws.
template <class Body>
std::int32_t outcome(Body&& body) {
  try {
    std::forward<Body>(body)();
    return 0;
  } catch (const CallError& failure) {
    return failure.error;
  }
}

/// A procedure with an error code. When told to fail, it returns the error without running `body`.
template <class Result, class Body>
Result hostCall(SuiteId suite, const char* procedure, Body&& body) {
  const HostEntry entry(suite, procedure);
  if (const auto error = theFaults().strike(procedure)) return static_cast<Result>(*error);
  return static_cast<Result>(outcome(std::forward<Body>(body)));
}

/// A procedure that releases something. When told to fail, it returns the error but still runs
/// `body`, since a caller cannot retry a release.
template <class Result, class Body>
Result hostRelease(SuiteId suite, const char* procedure, Body&& body) {
  const HostEntry entry(suite, procedure);
  const auto error = theFaults().strike(procedure);
  const std::int32_t own = outcome(std::forward<Body>(body));
  return static_cast<Result>(error.value_or(own));
}

/// A procedure without an error code: returns `body`'s result, or `otherwise` if it fails.
template <class Result, class Body>
Result hostAnswer(SuiteId suite, const char* procedure, Result otherwise, Body&& body) {
  const HostEntry entry(suite, procedure);
  if (theFaults().strike(procedure)) return otherwise;
  Result result = otherwise;
  outcome([&] { result = std::forward<Body>(body)(); });
  return result;
}

/// The place that a procedure writes an answer to. Throws paramErr if it is null.
template <class T>
T& destination(T* pointer) {
  if (pointer == nullptr) throw CallError{paramErr};
  return *pointer;
}

/// Writes what `make` returns. Checks `pointer` first, so that nothing is made and then leaked.
template <class T, class Make>
void handOut(T* pointer, Make&& make) {
  T& place = destination(pointer);
  place = std::forward<Make>(make)();
}

/// Copies as much of `text` as fits into `size` bytes with a terminating zero. Throws paramErr if
/// `size` is 0.
void copyText(std::string_view text, char* destination, std::uint32_t size);

}  // namespace simulator
