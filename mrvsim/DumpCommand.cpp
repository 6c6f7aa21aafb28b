#include "mrvsim/DumpCommand.h"

#include <fmt/format.h>

#include <charconv>
#include <stdexcept>

#include "codegen/DumpDescriptor.h"
#include "codegen/ReadyFile.h"
#include "hostutil/File.h"
#include "mrvsim/ActionInput.h"
#include "mrvsim/ActionOutline.h"
#include "mrvsim/DumpActions.h"
#include "mrvsim/ExitStatus.h"
#include "mrvsim/Generation.h"
#include "mrvsim/Output.h"
#include "mrvsim/ProgressBar.h"
#include "simulator/host/Host.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/Wording.h"

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

An action file (.atn) may stand in place of the descriptor. Every step is then
appended in order, each with a comment that names set, action and step. --set,
--action and --step choose by name, or by a number from 1 if nothing has that
name; a name stands for everything that has it.

--ready writes a C++17 source file that compiles as it is, in place of what FILE
held: a function for each step, and PlayAction, which plays an action by the
names of its set and itself. A descriptor in JSON becomes the action "1" in the
set "dump". An item that cannot be rebuilt becomes a comment that begins with
"Incomplete", and its step fails instead of doing something else. docs/dump.md
says how to use the file.

The text of nested descriptors is indented, so it grows with the square of their
depth. A text longer than --max-size is an error, and nothing is written.

Exit status: 0 if the text was written, 2 if the descriptor, the event, the
choice or a file cannot be used, 3 or 4 if the generator misused the host or
broke: one line on standard error says why.)";

namespace {

constexpr const char* kDefaultEvent = "setd";

// The set and the action that a descriptor in JSON stands in.
constexpr const char* kJsonSet = "dump";
constexpr const char* kJsonAction = "1";

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

/// Throws if options are given that do not go with each other or with the kind of file.
void requireFitting(const DumpOptions& options, const std::string& name, bool isAction) {
  if (options.list && options.ready) {
    throw std::runtime_error("--list writes nothing; leave out --ready");
  }
  if (options.list && options.steps.isGiven()) {
    throw std::runtime_error("--list shows the whole file; leave out --set, --action and --step");
  }
  if (isAction && options.event) {
    throw std::runtime_error(fmt::format(
        "{}: --event is for a descriptor in JSON; the steps of an action file have events", name));
  }
  if (!isAction && options.steps.isGiven()) {
    throw std::runtime_error(
        fmt::format("{}: --set, --action and --step are for an action file (.atn)", name));
  }
}

ContainerPtr readDescriptor(const InputFile& input) {
  return parseDescriptor(input.text(), input.name(), theHost().typeIds());
}

/// A descriptor in JSON is listed as the one step of an action "1" in a set "dump".
SetOutline readOutline(const DumpOptions& options, const InputFile& input, bool isAction) {
  if (!isAction) {
    const ContainerPtr content = readDescriptor(input);
    SetOutline set{.name = kJsonSet, .actions = {{.name = kJsonAction}}};
    set.add({.event = eventID(options.event.value_or(kDefaultEvent)), .parameters = content},
            theHost().typeIds());
    return set;
  }
  ActionInput source(input);
  return outlineOf(source);
}

/// Reads an action file to its end, so that nothing is generated from a broken one.
std::function<void(const GeneratorSide&)> workOfActions(const DumpOptions& options,
                                                        const InputFile& input) {
  const ChosenSteps steps =
      chosenSteps(options.steps, readOutline(options, input, true), options.input);
  const auto work = options.ready ? dumpReadyActions : dumpActions;
  return [&input, steps, work](const GeneratorSide& generator) {
    ActionInput source(input);
    work(source, steps, generator);
  };
}

/// One action "1" in the set "dump".
void dumpReadyDescriptor(const ContainerPtr& content, std::uint32_t event,
                         const std::string& name) {
  const File file(std::fopen(name.c_str(), "a"));
  ReadyFile ready(file.get());
  ready.beginAction(kJsonSet, kJsonAction, 1);
  ready.addStep({}, event, content ? theHost().makeDescriptor(content) : nullptr);
  ready.finish();
}

std::function<void(const GeneratorSide&)> workOfJson(const DumpOptions& options,
                                                     const InputFile& input) {
  const ContainerPtr content = readDescriptor(input);
  const std::uint32_t event = eventID(options.event.value_or(kDefaultEvent));
  if (options.ready) {
    return [content, event](const GeneratorSide& generator) {
      dumpReadyDescriptor(content, event, generator.file);
    };
  }
  return [content, event](const GeneratorSide& generator) {
    PIUDumpDescriptor(event, content ? theHost().makeDescriptor(content) : nullptr,
                      generator.file.c_str());
  };
}

int list(const DumpOptions& options, const InputFile& input, bool isAction) {
  Output out("-");
  out.expectNoneOf({options.input});
  const std::string text = outlineText(readOutline(options, input, isAction));
  out.open();
  out.write(text);
  out.commit();
  return kDone;
}

/// Nested descriptors are indented, so the length of the text grows with the square of the depth.
void expectRoom(const DumpOptions& options, const std::string& name, std::uint64_t size) {
  if (size <= options.maxSize) return;
  throw std::runtime_error(fmt::format(
      "{}: the text is longer than {} bytes; --max-size allows more", name, options.maxSize));
}

int dump(const DumpOptions& options, const InputFile& input, bool isAction) {
  Output out(options.file, options.ready ? Output::Mode::kReplace : Output::Mode::kAppend);
  const auto work = isAction ? workOfActions(options, input) : workOfJson(options, input);
  out.expectNoneOf({options.input});
  out.open();
  ProgressBar progress(input.name(), input.size().value_or(0), !options.quiet);
  std::uint64_t size = 0;
  const auto take = [&](std::string_view text) {
    expectRoom(options, input.name(), size += text.size());
    out.write(text);
  };
  const int status =
      generate(input.name(), work,
               {.text = take, .progress = [&](std::uint64_t at) { progress.update(at); }});
  if (status != kPluginBroke) out.commit();
  return status;
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
  const InputFile input(options.input);
  const bool isAction = isActionFile(options.input, input);
  requireFitting(options, input.name(), isAction);
  return options.list ? list(options, input, isAction) : dump(options, input, isAction);
}

}  // namespace simulator
