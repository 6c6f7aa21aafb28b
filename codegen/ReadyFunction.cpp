#include "codegen/ReadyFunction.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"

namespace {

constexpr std::size_t kPartLength = 500;

/// A parameter; one that is not used has no name.
std::string parameter(std::string_view type, std::string_view name, const std::string& body) {
  const std::string text(type);
  return body.find(std::string(name) + "[") == std::string::npos ? text
                                                                 : text + " " + std::string(name);
}

}  // namespace

void ReadyFunction::begin(std::string name) {
  names_.beginFunction();
  name_ = std::move(name);
  body_.clear();
  parts_.clear();
  partCount_ = 0;
  statements_ = 0;
  descriptors_ = {};
  lists_ = {};
  owners_ = {};
  isComplete_ = true;
}

void ReadyFunction::mayCut() {
  if (statements_ >= kPartLength) cut();
}

void ReadyFunction::cut() {
  writer_.flush();
  parts_ += "static int " + partName(++partCount_) + "(" +
            parameter("ActionDescriptor*", "desc", body_) + ", " +
            parameter("ActionList*", "list", body_) + ") {\n  int error = 0;\n" + ownersOfBody() +
            body_ + "  return 0;\n}\n\n";
  body_.clear();
  owners_ = {};
  statements_ = 0;
}

std::string ReadyFunction::partName(std::size_t part) const {
  return name_ + "_part" + std::to_string(part);
}

std::string ReadyFunction::spelling(std::uint32_t id, const char* kind) {
  if (auto text = names_.spelling(id, kind)) return *std::move(text);
  lacks("the host's string ID ", id, " does not lead back to its number");
  return std::to_string(id);
}

void ReadyFunction::write(std::string_view comment, std::uint32_t event, SourceWriter& out) {
  writePlay(event);
  writer_.flush();
  out.write(names_.declarations(), parts_, "// ", comment, "\nstatic int ", name_, "() {\n");
  writeLookUps(out);
  writeArrays(out);
  out.write(ownersOfBody());
  writeCalls(out);
  out.write(body_, "}\n\n");
}

void ReadyFunction::writePlay(std::uint32_t event) {
  const std::string eventName = isComplete_ ? spelling(event, kEventRole.kind) : "";
  if (isComplete_) {
    writer_.line("  ActionDescriptor result;");
    writer_.line("  return sPSActionControl->Play(result.out(), ", eventName, ", ",
                 descriptors_.most > 0 ? "desc[0].get()" : "nullptr", ", plugInDialogSilent);");
  } else {
    comment("Played as it is, the step could do something else.");
    writer_.line("  return errPlugInHostInsufficient;");
  }
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
  out.line(kCheck);
}

void ReadyFunction::writeArrays(SourceWriter& out) const {
  const auto count = [](const Slots& slots) { return static_cast<std::int64_t>(slots.most); };
  if (descriptors_.most > 0) out.line("  ActionDescriptor desc[", count(descriptors_), "];");
  if (lists_.most > 0) out.line("  ActionList list[", count(lists_), "];");
}

std::string ReadyFunction::ownersOfBody() const {
  std::string text;
  if (owners_.reference) text += "  ActionReference ref;\n";
  if (owners_.alias) text += "  OwnedAlias alias;\n";
  if (owners_.bookmark) text += "  OwnedBookmark bookmark;\n";
  if (owners_.text) text += "  OwnedText text;\n";
  return text;
}

void ReadyFunction::writeCalls(SourceWriter& out) const {
  const std::string_view lists = lists_.most > 0 ? "list" : "nullptr";
  for (std::size_t part = 1; part <= partCount_; ++part) {
    out.line("  error = ", partName(part), "(desc, ", lists, ");");
    out.line(kCheck);
  }
}
