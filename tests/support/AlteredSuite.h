// A host of which single procedures answer otherwise.
#pragma once

#include "suites/AutoSuite.h"

namespace testing_support {

/// Puts a copy of the host's suite into a holder for its lifetime; the test exchanges procedures of
/// the copy:
///
///     AlteredSuite property(sPSProperty);
///     property->getPropertyProc = nullptr;
template <class T>
class AlteredSuite {
 public:
  explicit AlteredSuite(AutoSuite<T>& holder) : holder_(holder) {
    if (holder.suite == nullptr) holder.AcquireSuite(true);
    host_ = holder.suite;
    copy_ = *host_;
    holder.suite = &copy_;
  }
  ~AlteredSuite() { holder_.suite = host_; }
  AlteredSuite(const AlteredSuite&) = delete;
  AlteredSuite& operator=(const AlteredSuite&) = delete;

  T* operator->() { return &copy_; }

 private:
  AutoSuite<T>& holder_;
  const T* host_;
  T copy_;
};

}  // namespace testing_support
