// The procedures that a scenario can make fail.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// Whether `name` is a procedure of one of the host's suites or of the device framework, such as
/// "ActionControl.Get", or one of the platform's calls, such as "Mac.CreateEvent".
bool isProcedure(std::string_view name);

/// All of these names, sorted.
std::vector<std::string> procedureNames();

}  // namespace simulator
