// `mrvsim live`: opens a window in which the plug-in is driven by hand.
#pragma once

#include <cstdint>
#include <string>

namespace simulator {

struct LiveOptions {
  std::string scenario;      ///< whose set-up to use, a JSON file; empty: the window's own
  std::string plugin;        ///< a module or a bundle; empty: the module in the program's folder
  std::string record;        ///< a file for what was done, as a scenario; empty: none
  std::string log;           ///< a file for the log; empty: none
  std::string status;        ///< a file or pipe for what goes on in the window; empty: none
  std::string screenshot;    ///< a PNG file for the last picture; empty: none
  std::uint64_t frames = 0;  ///< close after so many pictures, as fast as possible; 0: by hand
  bool demo = false;         ///< play the scenario's steps
  double timeout = 5;        ///< the longest that the plug-in may take for one step, in seconds
};

/// Returns the program's exit status after the window was closed: 0, 3 if the plug-in misused the
/// host or the platform, 4 if it broke. Throws `std::exception` if there is no window, or if it
/// could not be done, and `Interrupted`; what was done until then is still recorded.
int runLive(const LiveOptions& options);

}  // namespace simulator
