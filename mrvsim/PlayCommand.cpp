#include "mrvsim/PlayCommand.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "simulator/base/Log.h"
#include "simulator/scenario/OutputCapture.h"
#include "simulator/scenario/Player.h"
#include "simulator/scenario/ScenarioReader.h"
#include "simulator/scenario/Summary.h"

namespace simulator {

namespace {

constexpr int kPlayed = 0;
constexpr int kCannotPlay = 2;
constexpr int kMisused = 3;

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// The stream for the log; null if only a summary is wanted.
Stream openLog(const PlayOptions& options, int standardOutput) {
  if (options.log.empty()) {
    return {options.summary ? nullptr : fdopen(dup(standardOutput), "w"), std::fclose};
  }
  Stream stream(std::fopen(options.log.c_str(), "w"), std::fclose);
  if (!stream) {
    throw BadScenario(fmt::format("{}: cannot be written: {}", options.log, std::strerror(errno)));
  }
  return stream;
}

void writeLine(std::FILE* stream, const Json& line) {
  // The plug-in may print invalid UTF-8.
  const std::string text = line.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
  std::fwrite(text.data(), 1, text.size(), stream);
}

/// Replaces the home folder's name, which differs each time, so logs can be compared.
std::string withHomeAsTilde(std::string text, const std::string& home) {
  for (std::size_t at = text.find(home); at != std::string::npos; at = text.find(home, at)) {
    text.replace(at, home.size(), "~");
  }
  return text;
}

int play(const PlayOptions& options) {
  const Scenario scenario = readScenario(options.scenario);
  const TemporaryHome home;
  Summary summary;
  OutputCapture capture;
  const Stream stream = openLog(options, capture.original());
  const auto logPrinted = [&](const std::string& text) {
    theLog().write("printed", {{"text", withHomeAsTilde(text, home.path().string())}});
  };
  theLog().setSink([&](const Json& line) {
    summary.line(line);
    if (stream) writeLine(stream.get(), line);
  });
  theLog().setPrelude([&] { capture.drain(logPrinted); });
  Player player(scenario, home, &summary);
  player.play(options.plugin.empty() ? besideProgram("MrvPhotoshop.so") : options.plugin,
              besideProgram("libMoravinClient.so"));
  capture.finish(logPrinted);
  theLog().setPrelude({});
  theLog().setSink({});
  if (options.summary) dprintf(capture.original(), "%s", summary.text().c_str());
  return theLog().misuses() > 0 ? kMisused : kPlayed;
}

}  // namespace

int runPlay(const PlayOptions& options) {
  try {
    return play(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mrvsim: %s\n", error.what());
    return kCannotPlay;
  }
}

}  // namespace simulator
