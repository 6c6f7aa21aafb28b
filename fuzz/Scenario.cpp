// Reads any bytes as a scenario. A refusal is one line that begins with the file's name; a scenario
// that is good is good again when its JSON is written anew, without spaces.
#include "fuzz/Input.h"
#include "simulator/host/Host.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/ScenarioReader.h"

namespace simulator {

// Stands for the host's list, so that the target needs no host.
std::vector<std::string_view> hostProcedures() {
  return {"ActionControl.Get", "ActionControl.Play"};
}

}  // namespace simulator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  // Files that a scenario names would be opened.
  if (text.find("actions") != text.npos || text.find('\\') != text.npos) return -1;
  try {
    const std::size_t steps = simulator::parseScenario(text, "fuzzed").steps.size();
    const std::string again = simulator::parseJson(text, "fuzzed").dump();
    fuzz::require(simulator::parseScenario(again, "again").steps.size() == steps,
                  "a scenario has as many steps in another layout");
  } catch (const simulator::BadScenario& error) {
    const std::string what = error.what();
    fuzz::require(what.starts_with("fuzzed:"), "a refusal begins with the file's name");
    fuzz::require(what.find('\n') == what.npos, "a refusal is one line");
  }
  return 0;
}
