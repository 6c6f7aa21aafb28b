#include "mrvsim/DumpCommand.h"

#include <fmt/format.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "codegen/DumpDescriptor.h"
#include "hostutil/File.h"
#include "simulator/host/Host.h"
#include "simulator/scenario/JsonFile.h"
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
    any other code     no further field: an item of a type nobody knows

A reference is a list of forms, the innermost first; each has a class (an ID):

    [{"form": "indx", "class": "Lyr ", "value": 2},
     {"form": "Enmr", "class": "Dcmn", "enumType": "Ordn", "value": "Trgt"}]

    Clss               no further field
    Enmr               enumType: ID, value: ID
    Idnt, indx, rele   value: an integer (identifier, index, offset)
    prop               key: ID
    name               value: a text

Exit status: 0 when the text was appended, 2 when the descriptor, the event or
the file cannot be used: one line on standard error says why.)";

namespace {

constexpr int kDumped = 0;
constexpr int kCannotDump = 2;
constexpr int kMisused = 3;

/// Prints the generator's system log and its misuses on standard error; drops all other log lines.
void showLog() {
  theLog().setSink([](const Json& line) {
    if (line["what"] != "syslog" && line["what"] != "misuse") return;
    const std::string text = line["text"];
    std::fprintf(stderr, "mrvsim: %s: %s\n", line["what"].get<std::string>().c_str(), text.c_str());
  });
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
    throw std::runtime_error(onOneLine(fmt::format("--event {}: {}", text, error.reason())));
  }
}

/// The descriptor that the file describes; null if the file holds JSON's null.
PIActionDescriptor readDescriptor(const std::string& file) {
  try {
    const ContainerPtr content =
        descriptorFromJson(parseJson(readTextFile(file), file), theHost().typeIds());
    return content ? theHost().makeDescriptor(content) : nullptr;
  } catch (const DescriptorJsonError& error) {
    throw std::runtime_error(onOneLine(fmt::format("{}: {}", file, error.what())));
  }
}

/// Throws if the file cannot be opened, which the generator would not report.
void requireWritable(const std::string& file) {
  if (File(std::fopen(file.c_str(), "a"))) return;
  throw std::runtime_error(fmt::format("{}: cannot be written: {}", file, std::strerror(errno)));
}

void dump(const DumpOptions& options) {
  const PIActionDescriptor descriptor = readDescriptor(options.descriptor);
  const std::uint32_t event = eventID(options.event);
  requireWritable(options.file);
  sSPBasic = theHost().basicSuite();
  PIUDumpDescriptor(event, descriptor, options.file.c_str());
  PIUSuitesRelease();
  theHost().reportLeaks();
}

}  // namespace

int runDump(const DumpOptions& options) {
  try {
    showLog();
    dump(options);
    return theLog().misuses() > 0 ? kMisused : kDumped;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mrvsim: %s\n", error.what());
    return kCannotDump;
  }
}

}  // namespace simulator
