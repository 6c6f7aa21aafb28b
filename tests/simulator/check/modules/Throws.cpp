// Lets an exception out of its entry point.
#include <stdexcept>

#include "PlugIn.h"

namespace {

struct HostFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace

ENTRY_POINT(const char*, const char* selector, void*) {
  if (isStartup(selector)) throw HostFailure("no suite\nto be had");
  return 0;
}
