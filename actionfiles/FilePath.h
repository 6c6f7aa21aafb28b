// The files that items of an action file name. [any-thread]
#pragma once

#include <optional>
#include <string_view>

#include "actionfiles/ActionFile.h"

namespace actionfiles {

/// The path in the bytes of a 'Pth ' item: 'txtu', two 32-bit numbers (the size of the bytes and
/// the number of units) and UTF-16, all three little-endian. nullopt if the bytes are not of that
/// form.
std::optional<Text> pathOf(std::string_view bytes);

/// The file's name, without its folders, in the bytes of an 'alis' item: an alias record of version
/// 2, which holds it at byte 50 as a length and up to 63 characters in Mac Roman. nullopt if the
/// bytes are not of that form.
std::optional<Text> fileNameOfAlias(std::string_view bytes);

}  // namespace actionfiles
