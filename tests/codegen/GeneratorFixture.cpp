#include "tests/codegen/GeneratorFixture.h"

#include <map>
#include <regex>

#include "codegen/Walkers.h"
#include "simulator/base/Faults.h"
#include "simulator/base/Log.h"
#include "simulator/macos/Folders.h"
#include "suites/BasicSuite.h"
#include "tests/codegen/MemoryStream.h"

namespace {

simulator::Json parsed(const std::string& json) { return simulator::jsonOf(json); }

template <class Walk>
std::string walkedText(Walk walk) {
  tabLevel = 1;
  MemoryStream stream;
  walk(stream.file());
  return stream.text();
}

}  // namespace

GeneratorFixture::GeneratorFixture() {
  sSPBasic = simulator::theHost().basicSuite();
  simulator::setHomeFolder(folder());
  simulator::theLog().setSink([this](const simulator::Json& line) {
    if (line["what"] == "syslog") systemLog_.push_back(line["text"]);
    if (line["what"] == "suite" && line["do"] == "acquire") acquiredSuites_.push_back(line["name"]);
    if (line["what"] == "misuse") ADD_FAILURE() << line["text"];
  });
}

GeneratorFixture::~GeneratorFixture() {
  simulator::theFaults().clear();
  EXPECT_EQ(simulator::theHost().objectsOwned(), 0u) << "leaked";
  PIUSuitesRelease();
  simulator::theLog().setSink({});
}

PIActionDescriptor GeneratorFixture::descriptor(const std::string& json) {
  return simulator::theHost().makeDescriptor(
      simulator::descriptorFromJson(parsed(json), simulator::theHost().typeIds()));
}

PIActionList GeneratorFixture::list(const std::string& json) {
  return simulator::theHost().makeList(
      simulator::listFromJson(parsed(json), simulator::theHost().typeIds()));
}

PIActionReference GeneratorFixture::reference(const std::string& json) {
  return simulator::theHost().makeReference(
      simulator::referenceFromJson(parsed(json), simulator::theHost().typeIds()));
}

std::string GeneratorFixture::walked(PIActionDescriptor descriptor) {
  return walkedText([&](std::FILE* stream) { DumpInfoFromDescriptor(descriptor, stream); });
}

std::string GeneratorFixture::walked(PIActionList list) {
  return walkedText([&](std::FILE* stream) { DumpInfoFromList(list, stream); });
}

std::string GeneratorFixture::walked(PIActionReference reference) {
  return walkedText([&](std::FILE* stream) { DumpInfoFromReference(reference, stream); });
}

std::string GeneratorFixture::dumped(std::uint32_t eventID, PIActionDescriptor descriptor) {
  const std::size_t before = fileText().size();
  PIUDumpDescriptor(eventID, descriptor, file().c_str());
  return fileText().substr(before);
}

std::string GeneratorFixture::numbered(const std::string& text) {
  static const std::regex handle("(desc|list|ref)(0x[0-9a-f]+|[0-9a-f]{16})\\b");
  std::map<std::uint64_t, std::size_t> numbers;
  std::string result;
  std::size_t end = 0;
  for (std::sregex_iterator match(text.begin(), text.end(), handle), last; match != last; ++match) {
    const std::string spelling = (*match)[2];
    const std::uint64_t value = std::stoull(spelling, nullptr, 16);
    const std::size_t number = numbers.try_emplace(value, numbers.size() + 1).first->second;
    result += text.substr(end, static_cast<std::size_t>(match->position()) - end);
    result += (*match)[1].str() + (spelling.starts_with("0x") ? "0x" : "");
    result += "<" + std::to_string(number) + ">";
    end = static_cast<std::size_t>(match->position() + match->length());
  }
  return result + text.substr(end);
}
