#include "codegen/ReadyNames.h"

#include <PIActions.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "codegen/Literals.h"
#include "codegen/Terminology.h"
#include "suites/Suites.h"

namespace {

/// The host's whole string for a run-time identifier, of any length; empty if it has none.
std::string hostString(std::uint32_t id) {
  constexpr std::size_t kLongest = std::size_t{1} << 30;
  // Branch never false: only a host that fills a gigabyte with one name ends the loop.
  for (std::size_t size = kNameSize; size <= kLongest; size *= 4) {
    std::string text(size, '\0');
    const auto room = static_cast<uint32>(size);
    if (sPSActionControl->TypeIDToStringID(id, text.data(), room) != 0) return "";
    text.back() = '\0';
    text.resize(text.find('\0'));
    if (text.size() + 1 < size) return text;
  }
  return "";
}

bool leadsBack(const std::string& string, std::uint32_t id) {
  DescriptorTypeID found = 0;
  return sPSActionControl->StringIDToTypeID(string.c_str(), &found) == 0 && found == id;
}

/// Appends an identifier by value, with its name, if it has one, and its code as a comment.
void appendValue(std::uint32_t id, const char* kind, std::string& text) {
  char buffer[kNameSize];
  const IDName name = nameOfID(id, kind, buffer);
  text += "0x";
  for (int shift = 28; shift >= 0; shift -= 4) text += "0123456789ABCDEF"[(id >> shift) & 0xF];
  text += " /* ";
  if (name.kind == NameKind::kConstant) text.append(name.text).append(" ");
  text += codeComment(id);
  text += " */";
}

}  // namespace

bool ReadyNames::append(std::uint32_t id, const char* kind, std::string& text) {
  Variable* const known = isRuntimeID(id) ? &variable(id) : nullptr;
  if (known != nullptr && !known->isExact) return false;
  if (known == nullptr || known->name.empty()) {
    appendValue(id, kind, text);
    return true;
  }
  if (known->function != function_) {
    known->function = function_;
    lookUps_.push_back(known->name);
  }
  text += known->name;
  return true;
}

void ReadyNames::beginFunction() {
  ++function_;
  lookUps_.clear();
}

ReadyNames::Variable& ReadyNames::variable(std::uint32_t id) {
  const auto found = variables_.find(id);
  return found != variables_.end() ? found->second
                                   : variables_.emplace(id, declared(id)).first->second;
}

/// A new variable, whose declaration is written.
ReadyNames::Variable ReadyNames::declared(std::uint32_t id) {
  const std::string string = hostString(id);
  if (string.empty()) return {};
  if (!leadsBack(string, id)) return {.name = {}, .isExact = false};
  const std::string name = freeName(string);
  declarations_ += "static RuntimeID " + name + "(" + stringLiteral(string) + ");\n";
  return {.name = name};
}

/// A name that no other variable has.
std::string ReadyNames::freeName(std::string_view string) {
  const std::string first = "string_" + identifierPart(string);
  std::string name = first;
  for (std::size_t number = 2; !taken_.insert(name).second; ++number) {
    name = first + "_" + std::to_string(number);
  }
  return name;
}
