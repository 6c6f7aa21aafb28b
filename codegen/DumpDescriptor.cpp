#include "codegen/DumpDescriptor.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "codegen/DumpState.h"
#include "codegen/FreeZone.h"
#include "codegen/HostValues.h"
#include "codegen/PlainContainer.h"
#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"
#include "codegen/Terminology.h"
#include "codegen/VariableNames.h"
#include "hostutil/File.h"

namespace {

/// Provides the current `freeZone` for its lifetime.
class CurrentFreeZone {
 public:
  CurrentFreeZone() { freeZone = &zone_; }
  ~CurrentFreeZone() { freeZone = nullptr; }
  CurrentFreeZone(const CurrentFreeZone&) = delete;
  CurrentFreeZone& operator=(const CurrentFreeZone&) = delete;

 private:
  FreeZone zone_;
};

/// The event that a generated function plays.
class EventName {
 public:
  explicit EventName(std::uint32_t id) : id_(id), name_(nameOfID(id, kEventRole.kind, buffer_)) {}
  EventName(const EventName&) = delete;
  EventName& operator=(const EventName&) = delete;

  IDName name() const { return name_; }

  /// The event's spelling in the play statement; for a run-time event, writes the look-up first.
  /// Compares the number as unsigned, while isRuntimeID compares it as signed: an event with its
  /// top bit set is named like a run-time event but not looked up. Kept as dumps in the field have
  /// it.
  IDName spelling(SourceWriter& out) const {
    if (id_ > static_cast<std::uint32_t>(kLastRuntimeID)) return name_;
    writeLookup(name_.text, kEventRole.variable, out);
    return {kEventRole.variable, NameKind::kVariable};
  }

 private:
  std::uint32_t id_;
  char buffer_[kNameSize];
  IDName name_;
};

void writeHead(const EventName& event, SourceWriter& out) {
  out.line("SPErr Play", event.name(), "(/*your parameters go here*/void)");
  out.line("{");
  tabLevel = 1;
  out.indentedLine("PIActionDescriptor result = NULL;");
  // The play statement may also use runtimeEventID. Its declaration is left to the code that the
  // function is pasted into.
  for (const std::string_view role : {"Key", "Type", "Obj", "Enum", "Class", "Prop", "Unit"}) {
    out.indentedLine("DescriptorTypeID runtime", role, "ID;");
  }
  out.indentedLine("SPErr error = kSPNoError;");
}

void writePlay(const EventName& event, PIActionDescriptor descriptor, SourceWriter& out) {
  const IDName spelling = event.spelling(out);
  out.indent();
  out.write("error = sPSActionControl->Play(&result, ", spelling, ", ");
  if (descriptor != nullptr) {
    out.write(nestedName("desc", descriptor));
  } else {
    out.write("NULL");
  }
  out.line(", plugInDialogSilent);");
  out.errorCheck();
}

void writeEnd(SourceWriter& out) {
  out.line("returnError:");
  out.indentedLine("if (result != NULL) sPSActionDescriptor->Free(result);");
  freeZone->write(out);
  out.indentedLine("return error;");
  out.line("}");
  out.line();
}

void writeFunction(std::uint32_t eventID, PIActionDescriptor descriptor, SourceWriter& out) {
  const EventName event(eventID);
  writeHead(event, out);
  writeDescriptor(descriptor, out);
  writePlay(event, descriptor, out);
  writeEnd(out);
}

}  // namespace

void PIUDumpDescriptor(std::uint32_t eventID, PIActionDescriptor descriptor, const char* fileName) {
  try {
    if (!holdActionSuites()) return;
    const CurrentFreeZone zone;
    tabLevel = 0;
    const File file(std::fopen(fileName, "a"));
    SourceWriter out(file.get());
    writeFunction(eventID, descriptor, out);
  } catch (...) {
    // Out of memory: the text ends here.
  }
}
