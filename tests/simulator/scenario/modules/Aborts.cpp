// A module that ends its process in a function that is found again by its name.
#include <cstdlib>

namespace crash_report_test {

[[gnu::noinline]] void abortHere() { std::abort(); }

}  // namespace crash_report_test

extern "C" [[gnu::visibility("default")]] void callAbortHere() { crash_report_test::abortHere(); }
