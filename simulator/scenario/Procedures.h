// The procedures that a scenario can make fail.
#pragma once

#include <string_view>

namespace simulator {

/// Whether the name is one of a procedure of the host or the framework, such as
/// "ActionControl.Get".
bool isProcedure(std::string_view name);

}  // namespace simulator
