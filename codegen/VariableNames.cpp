#include "codegen/VariableNames.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace {

std::string withDigits(std::string_view prefix, const char* format, const void* handle) {
  char digits[2 + 2 * sizeof handle + 1];
  std::snprintf(digits, sizeof digits, format, reinterpret_cast<unsigned long>(handle));
  return std::string(prefix) + digits;
}

}  // namespace

std::string declaredName(std::string_view prefix, const void* handle) {
  return withDigits(prefix, "%016lx", handle);
}

std::string nestedName(std::string_view prefix, const void* handle) {
  return withDigits(prefix, "0x%lx", handle);
}
