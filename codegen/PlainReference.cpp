#include "codegen/PlainReference.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "codegen/ContainerKinds.h"
#include "codegen/HostValues.h"
#include "codegen/PlainHeader.h"
#include "codegen/ReferenceWalk.h"
#include "codegen/SourceWriter.h"
#include "codegen/SpelledID.h"
#include "codegen/VariableNames.h"
#include "suites/Suites.h"

namespace {

/// Writes the statements that put the forms of a reference into `variable`, the reference being
/// rebuilt.
class PlainForms {
 public:
  PlainForms(std::string_view variable, SourceWriter& out) : variable_(variable), out_(out) {}

  void putClass(DescriptorClassID desiredClass) { put("PutClass", desiredClass); }

  template <class Number>
  void putNumber(std::string_view procedure, DescriptorClassID desiredClass, Number number) {
    put(procedure, desiredClass, number);
  }

  void putEnumerated(DescriptorClassID desiredClass, DescriptorEnumTypeID type,
                     DescriptorEnumID value) {
    const SpelledID classID(out_, desiredClass, kClassRole);
    const SpelledID valueID(out_, value, kEnumRole);
    const SpelledID typeID(out_, type, kEnumTypeRole);
    putSpelled("PutEnumerated", classID, typeID.spelling(), valueID.spelling());
  }

  void putProperty(DescriptorClassID desiredClass, DescriptorKeyID key) {
    const SpelledID classID(out_, desiredClass, kClassRole);
    const SpelledID keyID(out_, key, kPropertyRole);
    putSpelled("PutProperty", classID, keyID.spelling());
  }

  void putName(PIActionReference part, DescriptorClassID desiredClass) {
    uint32 length = 0;
    if (!succeeds("GetNameLength", sPSActionReference->GetNameLength(part, &length))) return;
    if (!isCount(length)) return writeError("GetNameLength", kSPBadParameterError);
    std::vector<char> name(std::size_t{length} + 1);
    const OSErr error = sPSActionReference->GetName(part, name.data(), length + 1);
    if (!succeeds("GetName", error)) return;
    name.back() = '\0';
    put("PutName", desiredClass, StringLiteral{name.data()});
  }

  /// Keeps the misspelt "Referene": developers search generated text for this spelling.
  template <class Number>
  void writeError(std::string_view call, Number number) {
    out_.indentedLine("ERROR: DumpInfoFromReferene on ", call, " = ", number);
  }

 private:
  template <class... Arguments>
  void put(std::string_view procedure, DescriptorClassID desiredClass,
           const Arguments&... arguments) {
    putSpelled(procedure, SpelledID(out_, desiredClass, kClassRole), arguments...);
  }

  template <class... Arguments>
  void putSpelled(std::string_view procedure, const SpelledID& desiredClass,
                  const Arguments&... arguments) {
    out_.indent();
    out_.write("error = ", ReferenceKind::kSuite, "->", procedure, "(", variable_, ", ",
               desiredClass.spelling());
    (out_.write(", ", arguments), ...);
    out_.line(");");
    out_.errorCheck();
  }

  bool succeeds(std::string_view call, OSErr error) {
    if (error != 0) writeError(call, error);
    return error == 0;
  }

  std::string_view variable_;
  SourceWriter& out_;
};

}  // namespace

void writeWholeReference(PIActionReference reference, SourceWriter& out) {
  if (reference == nullptr) return;
  writeContainerHeader<ReferenceKind>(reference, out);
  const std::string variable = declaredName(ReferenceKind::kVariable, reference);
  PlainForms forms(variable, out);
  walkReference(reference, forms);
}
