// What messages to people are made of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// The text as part of a one-line message: control bytes and bytes that are not UTF-8 become
/// escapes such as "\x1B", and if more than `longest` characters are left, "..." replaces the
/// middle.
std::string printable(std::string_view text, std::size_t longest = 80);

/// The same for the name of a file, which may be longer.
std::string printableFile(std::string_view file);

/// The candidate that `name` was probably meant to be, empty if none is close. Differences of case
/// count less than other differences.
std::string nearest(std::string_view name, const std::vector<std::string>& candidates);

/// "; did you mean "axes"?" with the nearest candidate; empty if none is close.
std::string guess(std::string_view name, const std::vector<std::string>& candidates);

/// "1 tick", "2 ticks"; `noun` takes an "s".
std::string counted(std::uint64_t count, std::string_view noun);

/// "a, b and c".
std::string listed(const std::vector<std::string>& names);

}  // namespace simulator
