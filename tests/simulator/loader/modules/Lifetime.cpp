// Static objects, pointers to rebase, and an exported variable.
#include "TestHost.h"

namespace {

class Recorder {
 public:
  explicit Recorder(int value) : value_(value) { testRecord(value_); }
  ~Recorder() { testRecord(-value_); }
  int value() const { return value_; }

 private:
  int value_;
};

Recorder first(1);
Recorder second(2);

int numbers[] = {3, 5, 7};
// The loader has to rebase these pointers.
int* const pointers[] = {&numbers[2], &numbers[0]};

}  // namespace

EXPORT int sumThroughPointers() { return *pointers[0] * 10 + *pointers[1]; }

EXPORT int firstUse() {
  static Recorder local(30);
  return local.value();
}

EXPORT int answer = 42;
