#include "codegen/ReferenceWalker.h"

#include <HostTerms.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "codegen/ContainerKinds.h"
#include "codegen/HostValues.h"
#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"
#include "codegen/VariableNames.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

namespace {

/// Writes one part of a reference: the statement that puts what the host's getters return for
/// `part` into `variable`, the reference being rebuilt.
class PartWriter {
 public:
  PartWriter(std::string_view variable, PIActionReference part, SourceWriter& out)
      : variable_(variable), part_(part), out_(out) {}

  void write() {
    DescriptorFormID form = 0;
    DescriptorClassID desiredClass = 0;
    if (!succeeds("GetForm", sPSActionReference->GetForm(part_, &form))) return;
    if (!succeeds("GetDesiredClass", sPSActionReference->GetDesiredClass(part_, &desiredClass))) {
      return;
    }
    writeForm(form, desiredClass);
  }

 private:
  void writeForm(DescriptorFormID form, DescriptorClassID desiredClass) {
    switch (form) {
      case kFormClass:
        return put("PutClass", desiredClass);
      case kFormEnumerated:
        return writeEnumerated(desiredClass);
      case kFormIdentifier:
        return writeNumber("PutIdentifier", "GetIdentifier", sPSActionReference->GetIdentifier,
                           desiredClass);
      case kFormProperty:
        return writeProperty(desiredClass);
      case kFormOffset:
        return writeNumber("PutOffset", "GetOffset", sPSActionReference->GetOffset, desiredClass);
      case kFormIndex:
        return writeNumber("PutIndex", "GetIndex", sPSActionReference->GetIndex, desiredClass);
      case kFormName:
        return writeName(desiredClass);
      default:
        return writeError("formID", form);
    }
  }

  void writeEnumerated(DescriptorClassID desiredClass) {
    DescriptorEnumTypeID type = 0;
    DescriptorEnumID value = 0;
    const OSErr error = sPSActionReference->GetEnumerated(part_, &type, &value);
    if (!succeeds("GetEnumerated", error)) return;
    const SpelledID classID(out_, desiredClass, kClassRole);
    const SpelledID valueID(out_, value, kEnumRole);
    const SpelledID typeID(out_, type, kEnumTypeRole);
    putSpelled("PutEnumerated", classID, typeID.spelling(), valueID.spelling());
  }

  void writeProperty(DescriptorClassID desiredClass) {
    DescriptorKeyID key = 0;
    if (!succeeds("GetProperty", sPSActionReference->GetProperty(part_, &key))) return;
    const SpelledID classID(out_, desiredClass, kClassRole);
    const SpelledID keyID(out_, key, kPropertyRole);
    putSpelled("PutProperty", classID, keyID.spelling());
  }

  template <class Number>
  void writeNumber(std::string_view procedure, std::string_view call,
                   OSErr (*get)(PIActionReference, Number*), DescriptorClassID desiredClass) {
    Number number = 0;
    if (succeeds(call, get(part_, &number))) put(procedure, desiredClass, number);
  }

  void writeName(DescriptorClassID desiredClass) {
    uint32 length = 0;
    if (!succeeds("GetNameLength", sPSActionReference->GetNameLength(part_, &length))) return;
    if (!isCount(length)) return writeError("GetNameLength", kSPBadParameterError);
    std::vector<char> name(std::size_t{length} + 1);
    const OSErr error = sPSActionReference->GetName(part_, name.data(), length + 1);
    if (!succeeds("GetName", error)) return;
    name.back() = '\0';
    put("PutName", desiredClass, StringLiteral{name.data()});
  }

  template <class... Arguments>
  void put(std::string_view procedure, DescriptorClassID desiredClass,
           const Arguments&... arguments) {
    putSpelled(procedure, SpelledID(out_, desiredClass, kClassRole), arguments...);
  }

  template <class... Arguments>
  void putSpelled(std::string_view procedure, const SpelledID& desiredClass,
                  const Arguments&... arguments) {
    out_.indent();
    out_.write(ReferenceKind::kCall, procedure, "(", variable_, ", ", desiredClass.spelling());
    (out_.write(", ", arguments), ...);
    out_.line(");");
    out_.errorCheck();
  }

  bool succeeds(std::string_view call, OSErr error) {
    if (error != 0) writeError(call, error);
    return error == 0;
  }

  /// Keeps the misspelt "Referene": developers search generated text for this spelling.
  template <class Number>
  void writeError(std::string_view call, Number number) {
    out_.indentedLine("ERROR: DumpInfoFromReferene on ", call, " = ", number);
  }

  std::string_view variable_;
  PIActionReference part_;
  SourceWriter& out_;
};

/// The part that contains `part`; empty at the end of the chain or if the call fails.
ActionReference containerOf(PIActionReference part) {
  ActionReference container;
  if (sPSActionReference->GetContainer(part, container.out()) != 0) return {};
  return container;
}

}  // namespace

void writeWholeReference(PIActionReference reference, SourceWriter& out) {
  if (reference == nullptr) return;
  writeContainerHeader<ReferenceKind>(reference, out);
  const std::string variable = declaredName(ReferenceKind::kVariable, reference);
  PartWriter(variable, reference, out).write();
  for (ActionReference part = containerOf(reference); part; part = containerOf(part.get())) {
    PartWriter(variable, part.get(), out).write();
  }
}
