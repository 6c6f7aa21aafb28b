#include "codegen/DumpDescriptor.h"

#include <cstring>

#include "codegen/HostValues.h"
#include "codegen/SourceWriter.h"
#include "codegen/Terminology.h"
#include "codegen/VariableNames.h"
#include "codegen/Walkers.h"
#include "hostutil/File.h"

std::int16_t tabLevel = 0;
FreeZone* freeZone = nullptr;

namespace {

/// Makes a FreeZone the current one for as long as it lives.
class CurrentFreeZone {
 public:
  CurrentFreeZone() { freeZone = &zone_; }
  ~CurrentFreeZone() { freeZone = nullptr; }
  CurrentFreeZone(const CurrentFreeZone&) = delete;
  CurrentFreeZone& operator=(const CurrentFreeZone&) = delete;

 private:
  FreeZone zone_;
};

void writeFunctionHead(const char* eventName, std::FILE* file) {
  SourceWriter out(file);
  out.line("SPErr Play", BareName{eventName}, "(/*your parameters go here*/void)");
  out.line("{");
  tabLevel = 1;
  out.indentedLine("PIActionDescriptor result = NULL;");
  // The text below uses a runtimeEventID, too. It is not declared here: where an event has one, it
  // belongs to the code that the function is pasted into.
  for (const std::string_view role : {"Key", "Type", "Obj", "Enum", "Class", "Prop", "Unit"}) {
    out.indentedLine("DescriptorTypeID runtime", role, "ID;");
  }
  out.indentedLine("SPErr error = kSPNoError;");
}

/// Writes the look-up of a run-time event and puts the variable that it fills in the name's place.
void writeEventLookup(char* eventName, SourceWriter& out) {
  out.indentedLine("error = sPSActionControl->StringIDToTypeID(", StringLiteral{eventName},
                   ", &runtimeEventID);");
  out.errorCheck();
  constexpr char kVariable[] = "runtimeEventID";
  std::memcpy(eventName, kVariable, sizeof kVariable);
}

void writePlay(const char* eventName, PIActionDescriptor descriptor, SourceWriter& out) {
  out.indent();
  out.write("error = sPSActionControl->Play(&result, ", BareName{eventName}, ", ");
  if (descriptor != nullptr) {
    out.write(NestedName("desc", descriptor));
  } else {
    out.write("NULL");
  }
  out.line(", plugInDialogSilent);");
  out.errorCheck();
}

void writeFunctionEnd(std::FILE* file) {
  {
    SourceWriter out(file);
    out.line("returnError:");
    out.indentedLine("if (result != NULL) sPSActionDescriptor->Free(result);");
  }
  freeZone->Output(file);
  SourceWriter out(file);
  out.indentedLine("return error;");
  out.line("}");
  out.line();
}

void writeFunction(std::uint32_t eventID, PIActionDescriptor descriptor, std::FILE* file) {
  char eventName[kNameSize];
  LongToStr(static_cast<std::int32_t>(eventID), "event", eventName);
  writeFunctionHead(eventName, file);
  DumpInfoFromDescriptor(descriptor, file);
  {
    SourceWriter out(file);
    // Meant: the number counts as unsigned here and as signed everywhere else. An event with its
    // top bit set is named as a run-time one, but never looked up.
    if (eventID <= static_cast<std::uint32_t>(kLastRuntimeID)) writeEventLookup(eventName, out);
    writePlay(eventName, descriptor, out);
  }
  writeFunctionEnd(file);
}

}  // namespace

void PIUDumpDescriptor(std::uint32_t eventID, PIActionDescriptor descriptor, const char* fileName) {
  try {
    if (!HoldActionSuites()) return;
    const CurrentFreeZone zone;
    tabLevel = 0;
    const File file(std::fopen(fileName, "a"));
    writeFunction(eventID, descriptor, file.get());
  } catch (...) {
    // Out of memory: the text ends where it was.
  }
}
