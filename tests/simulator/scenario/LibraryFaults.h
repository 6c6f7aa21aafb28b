// Lets the plug-in's calls of the C and C++ libraries fail. A program that links this replaces
// operator new, fopen, fread, fseek and fclose; calls that do not come from the plug-in pass.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace testing_support {

/// An order to fail: the plug-in's call of `call` with the index `after`, and `times` - 1 more.
struct LibraryFaults {
  std::string_view call = {};  ///< outlives the order
  std::uint64_t after = 0;
  std::uint64_t times = 0;
  std::uint64_t fired = 0;
};

/// The current order; none at the start. The plug-in makes these calls on the main thread alone.
LibraryFaults& libraryFaults();

/// The calls that can fail: operator new throws std::bad_alloc, fopen and fread return 0, fseek -1
/// and fclose EOF.
inline const std::set<std::string> kLibraryCalls = {"fclose", "fopen", "fread", "fseek",
                                                    "operator new"};

}  // namespace testing_support
