// What is known about the machine and the rights of this program. [main-thread]
#pragma once

#include <optional>
#include <string>

namespace mrvmac {

/// Such as "macOS Version 13.4 (Build 22F66)".
std::string systemName();

/// The processor's name, and whether the program runs translated on it.
std::string processorName();

/// The identifier of the current keyboard layout.
std::optional<std::string> keyboardLayoutIdentifier();

/// The user's preferences folder, found as the plug-in finds it.
std::optional<std::string> preferencesFolderPath();

/// Whether the system lets this program synthesize input. `ask`: a dialog of the system asks the
/// user, who then has to start the program again.
bool maySynthesizeInput(bool ask);

}  // namespace mrvmac
