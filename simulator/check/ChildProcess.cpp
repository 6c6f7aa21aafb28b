#include "simulator/check/ChildProcess.h"

#include <exception>
#include <stdexcept>
#include <string>

#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/WatchedProcess.h"

namespace simulator {

namespace {

double timeout = 60;

// In a child: the connection to its parent.
Channel* toParent = nullptr;

Json answerOf(const std::function<Json()>& work) {
  try {
    return {{"returned", work()}};
  } catch (const TemporaryFileError& error) {
    return {{"noTemporaryFile", error.what()}};
  } catch (const std::exception& error) {
    return {{"threw", error.what()}};
  } catch (...) {
    return {{"threw", "threw an exception that is not a std::exception"}};
  }
}

}  // namespace

void setChildTimeout(double seconds) { timeout = seconds; }

Json inChildProcess(const std::function<Json()>& work) {
  WatchedProcess process(
      [&](Channel& channel) {
        toParent = &channel;
        channel.send('=', answerOf(work).dump(-1, ' ', false, Json::error_handler_t::replace));
      },
      timeout);
  Json answer;
  const ProcessEnd end = process.watch([&](char, std::string_view text) { answer = jsonOf(text); });
  if (toParent != nullptr) toParent->makeProgress();
  if (answer.contains("noTemporaryFile")) {
    throw TemporaryFileError(answer["noTemporaryFile"].get<std::string>());
  }
  if (answer.contains("threw")) throw std::runtime_error(answer["threw"].get<std::string>());
  if (!answer.contains("returned")) throw std::runtime_error(end.text(timeout));
  return answer["returned"];
}

}  // namespace simulator
