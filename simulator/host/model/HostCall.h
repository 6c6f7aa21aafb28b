// What every procedure of a suite does on entry and exit.
#pragma once

#include <cstdint>
#include <mutex>
#include <string_view>
#include <type_traits>
#include <utility>

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

/// A reference to the body of a procedure: anything that can be called without arguments and lives
/// until the call is over. What procedures have in common is so compiled once and not for each
/// body.
class ProcedureBody {
 public:
  template <class Body>
    requires(!std::is_same_v<std::remove_cvref_t<Body>, ProcedureBody>)
  ProcedureBody(Body&& body)
      : body_(const_cast<void*>(static_cast<const void*>(&body))),
        call_([](void* address) { (*static_cast<std::remove_reference_t<Body>*>(address))(); }) {}

  void operator()() const { call_(body_); }

 private:
  void* body_;
  void (*call_)(void*);
};

/// Runs `body` and returns 0, or the error of the CallError that it throws.
std::int32_t outcome(ProcedureBody body);

/// What `hostCall` and `hostRelease` return, as an integer.
std::int32_t callResult(SuiteId suite, const char* procedure, ProcedureBody body);
std::int32_t releaseResult(SuiteId suite, const char* procedure, ProcedureBody body);

/// A procedure with an error code. If a fault is set for it, it returns the error without running
/// `body`.
template <class Result>
Result hostCall(SuiteId suite, const char* procedure, ProcedureBody body) {
  return static_cast<Result>(callResult(suite, procedure, body));
}

/// A procedure that releases something. If a fault is set for it, it returns the error but still
/// runs `body`, since a caller cannot retry a release.
template <class Result>
Result hostRelease(SuiteId suite, const char* procedure, ProcedureBody body) {
  return static_cast<Result>(releaseResult(suite, procedure, body));
}

/// A procedure without an error code: returns `body`'s result, or `otherwise` if it fails.
template <class Result, class Body>
Result hostAnswer(SuiteId suite, const char* procedure, Result otherwise, Body&& body) {
  Result result = otherwise;
  callResult(suite, procedure, [&] { result = body(); });
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
