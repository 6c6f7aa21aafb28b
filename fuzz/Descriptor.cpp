// Reads any bytes as a descriptor in JSON. What was read is written, and then read as the same.
#include "fuzz/Input.h"
#include "simulator/host/json/DescriptorJson.h"
#include "simulator/scenario/JsonFile.h"

namespace {

using namespace simulator;

void roundTrip(const Json& json) {
  TypeIds ids;
  const ContainerPtr descriptor = descriptorFromJson(json, ids);
  if (descriptor == nullptr) return;
  const Json written = descriptorToJson(*descriptor, ids);
  const ContainerPtr again = descriptorFromJson(written, ids);
  fuzz::require(descriptorToJson(*again, ids) == written, "what is written is read as the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    roundTrip(parseJson(text, "fuzzed"));
  } catch (const BadJsonFile& error) {
    fuzz::require(std::string(error.what()).starts_with("fuzzed:"),
                  "a refusal begins with the file's name");
  } catch (const DescriptorJsonError& error) {
    fuzz::require(error.place().empty() || error.place()[0] == '/', "a place is a JSON pointer");
    fuzz::require(!error.reason().empty(), "a refusal has a reason");
  }
  return 0;
}
