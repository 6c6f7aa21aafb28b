#include "mrvsim/DumpCommand.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <stdexcept>
#include <thread>

#include "codegen/DumpDescriptor.h"
#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "simulator/host/Host.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/Wording.h"
#include "suites/BasicSuite.h"
#include "suites/Suites.h"

namespace simulator {

const char kDescriptorHelp[] = R"(
The descriptor is a JSON list of items in order, or null for no descriptor:

    [{"key": "Dmtr", "type": "UntF", "unit": "#Pxl", "value": 13.5},
     {"key": "$brushName", "type": "TEXT", "value": "Soft round"}]

An ID is a text that begins with "$" (the string ID after it), any other text of
exactly four characters (a four-character code), or an integer from 0 to
4294967295 (the ID itself).

Every item has a key (an ID) and a type; the items of a list have no key:

    long, comp         value: an integer of 32 or 64 bits
    doub               value: a number
    UntF               unit: ID, value: a number
    bool               value: true or false
    enum               enumType: ID, value: ID
    type, GlbC         value: ID (a class, a global class)
    Objc, GlbO         class: ID, value: a descriptor, nested to any depth
    VlLs               value: a list of items without keys
    "obj "             value: a reference
    alis, "Pth ", bkmk value: the path of a file (alias, path, bookmark)
    TEXT               value: a text
    tdta               value: bytes in base64
    any other code     no further field: an item of an unknown type

A reference is a list of forms, the innermost first; each has a class (an ID):

    [{"form": "indx", "class": "Lyr ", "value": 2},
     {"form": "Enmr", "class": "Dcmn", "enumType": "Ordn", "value": "Trgt"}]

    Clss               no further field
    Enmr               enumType: ID, value: ID
    Idnt, indx, rele   value: an integer (identifier, index, offset)
    prop               key: ID
    name               value: a text

Exit status: 0 if the text was appended, 2 if the descriptor, the event or the
file cannot be used: one line on standard error says why.)";

namespace {

/// Prints the generator's system log and its misuses on standard error; drops all other log lines.
void showLog() {
  theLog().setSink([](const Json& line) {
    if (line["what"] != "syslog" && line["what"] != "misuse") return;
    const std::string text = line["text"];
    complain(fmt::format("{}: {}", line["what"].get<std::string>(), printable(text, 1000)));
  });
}

std::string readAll(int in) {
  std::string text;
  std::array<char, 65536> buffer{};
  for (ssize_t size; (size = read(in, buffer.data(), buffer.size())) != 0;) {
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) break;
    text.append(buffer.data(), static_cast<std::size_t>(size));
  }
  return text;
}

/// The JSON form of an ID on the command line: an integer, unless the text has four characters.
Json idArgument(const std::string& text) {
  std::uint32_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  const bool isNumber = error == std::errc() && stop == end && text.size() != 4;
  return isNumber ? Json(number) : Json(text);
}

std::uint32_t eventID(const std::string& text) {
  try {
    return idFromJson(idArgument(text), theHost().typeIds());
  } catch (const DescriptorJsonError& error) {
    throw std::runtime_error(fmt::format("--event {}: {}", printable(text), error.reason()));
  }
}

/// The descriptor that the file describes; null if the file holds JSON's null.
PIActionDescriptor readDescriptor(const std::string& file) {
  const InputFile input(file);
  const ContainerPtr content = parseDescriptor(input.text(), input.name(), theHost().typeIds());
  return content ? theHost().makeDescriptor(content) : nullptr;
}

/// The text that the generator writes. It goes through a pipe, which has no limit at which the
/// generator's writes would fail unnoticed.
std::string generate(std::uint32_t event, PIActionDescriptor descriptor) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("there is no pipe left");
  const OpenFile in(ends[0]);
  OpenFile out(ends[1]);
  std::string text;
  std::thread reader([&] { text = readAll(in.get()); });
  PIUDumpDescriptor(event, descriptor, fmt::format("/proc/self/fd/{}", out.get()).c_str());
  out = OpenFile();
  reader.join();
  return text;
}

}  // namespace

ContainerPtr parseDescriptor(const std::string& text, const std::string& name, TypeIds& ids) {
  try {
    return descriptorFromJson(parseJson(text, name), ids);
  } catch (const DescriptorJsonError& error) {
    throw BadJsonFile(faultAt(TextSource(text), name, error.place(), error.reason()));
  }
}

int runDump(const DumpOptions& options) {
  showLog();
  Output out(options.file, Output::Mode::kAppend);
  const PIActionDescriptor descriptor = readDescriptor(options.descriptor);
  const std::uint32_t event = eventID(options.event);
  out.expectNoneOf({options.descriptor});
  out.open();
  sSPBasic = theHost().basicSuite();
  out.write(generate(event, descriptor));
  PIUSuitesRelease();
  theHost().reportLeaks();
  out.commit();
  return theLog().misuses() > 0 ? kMisused : kDone;
}

}  // namespace simulator
