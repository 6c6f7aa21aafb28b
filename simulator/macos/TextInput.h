// The simulated keyboard: its layout and the modifiers held down.
#pragma once

#include <cstdint>
#include <string>

namespace simulator {

/// The identifier of the current layout, such as "com.apple.keylayout.US". [main-thread]
std::string& keyboardLayout();

/// Sets the modifiers that are down, as the event manager's bits. [main-thread]
void setKeyModifiers(std::uint32_t modifiers);

}  // namespace simulator
