#include "mrvsim/ValidateCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "actionfiles/ActionFileError.h"
#include "actionfiles/ActionFileReader.h"
#include "mrvsim/ActionInput.h"
#include "mrvsim/DumpCommand.h"
#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/JsonFile.h"
#include "simulator/scenario/ScenarioReader.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

/// Whether the first byte of the document begins a list or the word null.
bool isDescriptor(const InputFile& input) {
  std::uint64_t offset = 0;
  char c = ' ';
  while (input.read(offset, &c, 1) == 1 && (c == ' ' || c == '\t' || c == '\n' || c == '\r')) {
    ++offset;
  }
  return c == '[' || c == 'n';
}

void checkDescriptor(const InputFile& input) {
  TypeIds ids;
  parseDescriptor(input.text(), input.name(), ids);
}

void checkActions(const InputFile& input) {
  ActionInput source(input);
  actionfiles::ActionFileReader reader(source);
  while (reader.nextAction() != nullptr) {
  }
}

/// Reads the file; throws what is wrong with it.
std::vector<std::string> notesOn(const std::string& file) {
  InputFile input(file);
  const bool areActions = isActionFile(file, input);
  if (!areActions && !isDescriptor(input)) return ScenarioFile(std::move(input)).notes();
  areActions ? checkActions(input) : checkDescriptor(input);
  return {};
}

}  // namespace

int runValidate(const std::vector<std::string>& files) {
  if (std::count(files.begin(), files.end(), "-") > 1) {
    throw std::runtime_error("standard input can be read only once");
  }
  Output out("-");
  out.expectNoneOf(files);
  out.open();
  int status = kDone;
  const auto fault = [&](const std::exception& error, ExitStatus found) {
    complain(error.what());
    status = std::max<int>(status, found);
  };
  for (const std::string& file : files) {
    try {
      for (const std::string& note : notesOn(file)) complain("note: " + note);
      out.write(fmt::format("{}: ok\n", printableFile(file)));
      out.flush();
    } catch (const BadJsonFile& error) {
      fault(error, kFoundFaults);
    } catch (const BadScenario& error) {
      fault(error, kFoundFaults);
    } catch (const actionfiles::ActionFileError& error) {
      fault(error, kFoundFaults);
    } catch (const BadInput& error) {
      fault(error, kNotDone);
    }
  }
  out.commit();
  return status;
}

}  // namespace simulator
