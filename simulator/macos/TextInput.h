// The simulated keyboard: its layout and the modifier keys that are down.
#pragma once

#include <cstdint>
#include <string>

namespace simulator {

/// The identifier of the current layout, such as "com.apple.keylayout.US", which callers may
/// change. [main-thread]
std::string& keyboardLayout();

/// Sets the modifier keys that are down, as bits of the event manager (cmdKey, optionKey).
/// [main-thread]
void setKeyModifiers(std::uint32_t modifiers);

}  // namespace simulator
