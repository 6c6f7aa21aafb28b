// How every procedure of a suite is entered and left.
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

/// Stands for the call of one procedure: serialises the host, and reports a misuse where the call
/// comes on another thread than the main one or through a suite that is not held.
class HostEntry {
 public:
  HostEntry(SuiteId suite, const char* procedure);

 private:
  std::lock_guard<std::recursive_mutex> lock_;
};

/// Runs `body`: 0, or the error of the CallError that it throws.
template <class Body>
std::int32_t outcome(Body&& body) {
  try {
    std::forward<Body>(body)();
    return 0;
  } catch (const CallError& failure) {
    return failure.error;
  }
}

/// A procedure that may fail: `body` does not run where it is ordered to.
template <class Result, class Body>
Result hostCall(SuiteId suite, const char* procedure, Body&& body) {
  const HostEntry entry(suite, procedure);
  if (const auto error = theFaults().strike(procedure)) return static_cast<Result>(*error);
  return static_cast<Result>(outcome(std::forward<Body>(body)));
}

/// A procedure that gives something back. Ordered to fail it reports so, but takes it back all the
/// same: there is nothing more that the caller could do.
template <class Result, class Body>
Result hostRelease(SuiteId suite, const char* procedure, Body&& body) {
  const HostEntry entry(suite, procedure);
  const auto error = theFaults().strike(procedure);
  const std::int32_t own = outcome(std::forward<Body>(body));
  return static_cast<Result>(error.value_or(own));
}

/// A procedure without an error code: `body`'s result, or `otherwise` where it cannot answer.
template <class Result, class Body>
Result hostAnswer(SuiteId suite, const char* procedure, Result otherwise, Body&& body) {
  const HostEntry entry(suite, procedure);
  if (theFaults().strike(procedure)) return otherwise;
  Result result = otherwise;
  outcome([&] { result = std::forward<Body>(body)(); });
  return result;
}

/// Where a procedure writes its answer. A null destination ends it with paramErr.
template <class T>
T& destination(T* pointer) {
  if (pointer == nullptr) throw CallError{paramErr};
  return *pointer;
}

/// Writes what `make` makes, and makes nothing where there is no place for it.
template <class T, class Make>
void handOut(T* pointer, Make&& make) {
  T& place = destination(pointer);
  place = std::forward<Make>(make)();
}

/// Copies as much of `text` as fits into `size` bytes with a terminating zero. A size of 0 ends the
/// procedure with paramErr.
void copyText(std::string_view text, char* destination, std::uint32_t size);

}  // namespace simulator
