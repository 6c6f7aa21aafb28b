#include "mrvsim/PluginFailure.h"

#include <cxxabi.h>
#include <fmt/format.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>

#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

/// The name of a type as in a program.
std::string typeName(const std::type_info& type) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
  return name ? name.get() : type.name();
}

}  // namespace

std::string describeException() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  const std::string name = type == nullptr ? "an exception" : typeName(*type);
  try {
    throw;
  } catch (const std::exception& error) {
    return fmt::format("{} (\"{}\")", name, printable(error.what()));
  } catch (...) {
    return name;
  }
}

std::string withHomeAsTilde(std::string text, const std::string& home) {
  for (std::size_t at = text.find(home); at != std::string::npos; at = text.find(home, at)) {
    text.replace(at, home.size(), "~");
  }
  return text;
}

}  // namespace simulator
