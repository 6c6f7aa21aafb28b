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
  parts_ = 0;
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
  out_.write(names_.takeDeclarations(), "static int ", partName(++parts_), "(",
             parameter("ActionDescriptor*", "desc", body_), ", ",
             parameter("ActionList*", "list", body_), ") {\n  int error = 0;\n", ownersOfBody(),
             body_, "  return 0;\n}\n\n");
  body_.clear();
  owners_ = {};
  statements_ = 0;
}

std::string ReadyFunction::partName(std::size_t part) const {
  return name_ + "_part" + std::to_string(part);
}

std::string ReadyFunction::spelling(std::uint32_t identifier, const char* kind,
                                    std::string_view before) {
  std::string text(before);
  if (names_.append(identifier, kind, text)) return text;
  lacks("the host's string ID ", identifier, " does not lead back to its number");
  return text + std::to_string(identifier);
}

void ReadyFunction::end(std::string_view comment, std::uint32_t event) {
  writePlay(event);
  writer_.flush();
  out_.write(names_.takeDeclarations(), "// ", comment, "\nstatic int ", name_, "() {\n");
  writeLookUps();
  writeArrays();
  out_.write(ownersOfBody());
  writeCalls();
  out_.write(body_, "}\n\n");
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

void ReadyFunction::writeLookUps() const {
  if (names_.lookUps().empty()) {
    if (descriptors_.most > 0) out_.line("  int error = 0;");
    return;
  }
  out_.write("  int error = lookUp({");
  std::string_view separator;
  for (const std::string_view name : names_.lookUps()) {
    out_.write(separator, "&", name);
    separator = ",\n                      ";
  }
  out_.line("});");
  out_.line(kCheck);
}

void ReadyFunction::writeArrays() const {
  const auto count = [](const Slots& slots) { return static_cast<std::int64_t>(slots.most); };
  if (descriptors_.most > 0) out_.line("  ActionDescriptor desc[", count(descriptors_), "];");
  if (lists_.most > 0) out_.line("  ActionList list[", count(lists_), "];");
}

std::string ReadyFunction::ownersOfBody() const {
  std::string text;
  if (owners_.reference) text += "  ActionReference ref;\n";
  if (owners_.alias) text += "  OwnedAlias alias;\n";
  if (owners_.bookmark) text += "  OwnedBookmark bookmark;\n";
  if (owners_.text) text += "  OwnedText text;\n";
  return text;
}

void ReadyFunction::writeCalls() const {
  const std::string_view lists = lists_.most > 0 ? "list" : "nullptr";
  for (std::size_t part = 1; part <= parts_; ++part) {
    out_.line("  error = ", partName(part), "(desc, ", lists, ");");
    out_.line(kCheck);
  }
}
