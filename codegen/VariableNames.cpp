#include "codegen/VariableNames.h"

#include <cinttypes>
#include <cstdint>
#include <cstdio>

namespace {

std::string withDigits(std::string_view prefix, const char* format, const void* handle) {
  char digits[2 + 2 * sizeof handle + 1];
  std::snprintf(digits, sizeof digits, format, reinterpret_cast<std::uintptr_t>(handle));
  return std::string(prefix) + digits;
}

}  // namespace

std::string DeclaredName(std::string_view prefix, const void* handle) {
  return withDigits(prefix, "%016" PRIxPTR, handle);
}

std::string NestedName(std::string_view prefix, const void* handle) {
  return withDigits(prefix, "0x%" PRIxPTR, handle);
}
