#include "mrvsim/live/StatusLines.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "simulator/scenario/Interrupts.h"
#include "simulator/scenario/Wording.h"

namespace simulator::live {

StatusLines::StatusLines(const std::string& file) {
  if (file.empty()) return;
  const std::string name = file == "-" ? "/dev/stdout" : file;
  do {
    throwIfInterrupted();
    file_ = OpenFile(open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  } while (file_.get() < 0 && errno == EINTR);
  if (file_.get() >= 0) return;
  throw std::runtime_error(
      fmt::format("{}: cannot be written: {}", printableFile(file), std::strerror(errno)));
}

void StatusLines::write(const Json& line) {
  if (file_.get() < 0) return;
  const std::string text = line.dump() + "\n";
  // A reader that has gone is not missed.
  if (::write(file_.get(), text.data(), text.size()) < 0) file_ = OpenFile();
}

void StatusLines::place(const std::string& name, ImVec2 from, ImVec2 to) {
  if (file_.get() < 0) return;
  const std::array<int, 4> at = {static_cast<int>(from.x), static_cast<int>(from.y),
                                 static_cast<int>(to.x - from.x), static_cast<int>(to.y - from.y)};
  std::array<int, 4>& known = places_[name];
  if (known == at) return;
  known = at;
  hasNewPlaces_ = true;
  write({{"place", name}, {"at", at}});
}

void StatusLines::drawn() {
  ++drawn_;
  if (hasNewPlaces_) write({{"drawn", drawn_}});
  hasNewPlaces_ = false;
}

void StatusLines::seen(const Seen& seen) {
  if (file_.get() < 0) return;
  const HostState& host = seen.host;
  const Json view = {
      {"zoom", host.zoom}, {"origin", {host.origin.x, host.origin.y}}, {"brush", host.brush}};
  if (view != view_) write({{"view", view}});
  view_ = view;
  if (host.isConnected != isConnected_) write({{"connected", host.isConnected}});
  isConnected_ = host.isConnected;
  if (seen.breakdowns != breakdowns_) write({{"broke", seen.lastBreakdown}});
  breakdowns_ = seen.breakdowns;
}

}  // namespace simulator::live
