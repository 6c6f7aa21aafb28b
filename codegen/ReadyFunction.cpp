#include "codegen/ReadyFunction.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"

void ReadyFunction::begin() {
  names_.beginFunction();
  writer_.flush();
  body_.clear();
  descriptors_ = {};
  lists_ = {};
  owners_ = {};
  isComplete_ = true;
}

std::string ReadyFunction::spelling(std::uint32_t id, const char* kind) {
  if (auto text = names_.spelling(id, kind)) return *std::move(text);
  lacks("the host's string ID ", id, " does not lead back to its number");
  return std::to_string(id);
}

void ReadyFunction::write(std::string_view comment, std::string_view name, std::uint32_t event,
                          SourceWriter& out) {
  const std::string eventName = isComplete_ ? spelling(event, kEventRole.kind) : "";
  if (isComplete_) {
    writer_.line("  ActionDescriptor result;");
    writer_.line("  return sPSActionControl->Play(result.out(), ", std::string_view(eventName),
                 ", ", descriptors_.most > 0 ? "desc[0].get()" : "nullptr",
                 ", plugInDialogSilent);");
  } else {
    this->comment("Played as it is, the step could do something else.");
    writer_.line("  return errPlugInHostInsufficient;");
  }
  writer_.flush();
  out.write(names_.declarations(), "// ", comment, "\nstatic int ", name, "() {\n");
  writeLookUps(out);
  writeOwners(out);
  out.write(std::string_view(body_), "}\n\n");
}

void ReadyFunction::writeLookUps(SourceWriter& out) const {
  if (names_.lookUps().empty()) {
    if (descriptors_.most > 0) out.line("  int error = 0;");
    return;
  }
  out.write("  int error = lookUp({");
  std::string_view separator;
  for (const std::string_view name : names_.lookUps()) {
    out.write(separator, "&", name);
    separator = ",\n                      ";
  }
  out.line("});");
  out.line("  if (error != 0) return error;");
}

void ReadyFunction::writeOwners(SourceWriter& out) const {
  const auto count = [](const Slots& slots) { return static_cast<std::int64_t>(slots.most); };
  if (descriptors_.most > 0) out.line("  ActionDescriptor desc[", count(descriptors_), "];");
  if (lists_.most > 0) out.line("  ActionList list[", count(lists_), "];");
  if (owners_.reference) out.line("  ActionReference ref;");
  if (owners_.alias) out.line("  OwnedAlias alias;");
  if (owners_.bookmark) out.line("  OwnedBookmark bookmark;");
  if (owners_.text) out.line("  OwnedText text;");
}
