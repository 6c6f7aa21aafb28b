// Runs the plug-in's generator in a process of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace simulator {

/// The side of the process in which the generator runs.
struct GeneratorSide {
  std::string file;                                   ///< the generator appends its text to it
  std::function<void(std::uint64_t offset)> reached;  ///< reports how much of the input is done
};

/// The other side. What these functions throw ends the generator.
struct GenerationObserver {
  std::function<void(std::string_view)> text;          ///< receives the text piece by piece
  std::function<void(std::uint64_t offset)> progress;  ///< receives what `reached` reported
};

/// Runs `work` in a child process. The host's leaks are looked for after it. The system log and the
/// misuses go to standard error. Returns the program's exit status: 0 if done, 3 if the generator
/// misused the host or the platform, 4 if it did not come to its end: a line on standard error,
/// which begins with `name`, then says why. Throws `std::runtime_error` with the reason if `work`
/// throws, and `Interrupted`.
int generate(const std::string& name, const std::function<void(const GeneratorSide&)>& work,
             const GenerationObserver& observer);

}  // namespace simulator
