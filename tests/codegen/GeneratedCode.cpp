#include "tests/codegen/GeneratedCode.h"

#include <dlfcn.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "codegen/Terminology.h"
#include "tests/support/Process.h"

namespace {

constexpr char kPrologue[] = R"(
#include <SPErrorCodes.h>
#include "codegen/PathConversion.h"
#include "suites/Suites.h"

namespace generated {
static DescriptorEventID runtimeEventID;
static char zeros[1 << 16];
static void* voidPtrToData = zeros;
)";

constexpr char kEpilogue[] = R"(
static PSActionControlProcs control;

extern "C" void prepare(SPBasicSuite* host, decltype(PSActionControlProcs::Play) play) {
  sSPBasic = host;
  control = *sPSActionControl.operator->();
  control.Play = play;
  sPSActionControl.suite = &control;
}
extern "C" int run(unsigned long function) { return functions[function](); }
extern "C" void finish() { PIUSuitesRelease(); }
)";

/// Declarations of the host's published terminology.
std::string terminology() {
  std::string text;
  std::set<std::string> names;
  for (const PSConst& row : PSConstA) {
    if (!names.insert(row.name).second) continue;  // one name has two rows
    text += fmt::format("constexpr DescriptorTypeID {} = {:#x};\n", row.name, row.id);
  }
  return text;
}

std::string sourceOf(const std::vector<std::string>& functions) {
  std::string text = kPrologue + terminology();
  std::string table;
  for (std::size_t i = 0; i < functions.size(); ++i) {
    text += fmt::format("namespace f{} {{\n{}}}\n", i, adapted(functions[i]));
    table += fmt::format("f{}::PlayeventSet,\n", i);
  }
  return text + "}\nusing namespace generated;\nstatic SPErr (*const functions[])() = {\n" + table +
         "};\n" + kEpilogue;
}

/// Removes the declarations that are marked to be moved from `body`, and returns each of them once.
std::string takeDeclarations(std::string& body) {
  std::istringstream lines(body);
  std::string declarations;
  std::string rest;
  std::set<std::string> taken;
  for (std::string line; std::getline(lines, line);) {
    if (!line.ends_with("// Move this to the top of the routine!")) {
      rest += line + "\n";
    } else if (std::getline(lines, line) && taken.insert(line).second) {
      declarations += line + "\n";
    }
  }
  body = rest;
  return declarations;
}

}  // namespace

std::string adapted(const std::string& function) {
  static const std::regex nested("\\b(desc|list|ref)0x([0-9a-f]+)(?=, plugIn|\\);)");
  std::string body;
  std::size_t end = 0;
  for (std::sregex_iterator match(function.begin(), function.end(), nested), last; match != last;
       ++match) {
    body += function.substr(end, static_cast<std::size_t>(match->position()) - end);
    body += fmt::format("{}{:0>16}", (*match)[1].str(), (*match)[2].str());
    end = static_cast<std::size_t>(match->position() + match->length());
  }
  body += function.substr(end);
  const std::string declarations = takeDeclarations(body);
  return body.insert(body.find("{\n") + 2, declarations);
}

GeneratedCode::GeneratedCode(const std::vector<std::string>& functions,
                             const std::filesystem::path& folder) {
  const std::string source = (folder / "generated.cpp").string();
  const std::string module = (folder / "generated.so").string();
  testing_support::writeFile(source, sourceOf(functions));
  const auto compiled = testing_support::run(
      {"/bin/sh", "-c",
       fmt::format(COMPILE_COMMAND, fmt::arg("source", source), fmt::arg("module", module))});
  if (compiled.status == 0) module_ = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module_ == nullptr) ADD_FAILURE() << compiled.errors.substr(0, 4000);
}

GeneratedCode::~GeneratedCode() {
  if (module_ != nullptr) dlclose(module_);
}

void GeneratedCode::prepare(SPBasicSuite* host, decltype(PSActionControlProcs::Play) play) {
  reinterpret_cast<void (*)(SPBasicSuite*, decltype(play))>(symbol("prepare"))(host, play);
}

int GeneratedCode::run(std::size_t function) {
  return reinterpret_cast<int (*)(unsigned long)>(symbol("run"))(function);
}

void GeneratedCode::finish() { reinterpret_cast<void (*)()>(symbol("finish"))(); }

void* GeneratedCode::symbol(const char* name) { return dlsym(module_, name); }
