// References: chains of forms.
#include <algorithm>
#include <cstring>
#include <utility>

#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace reference_suite {
namespace {

OSErr call(const char* procedure, ProcedureBody body) {
  return hostCall<OSErr>(SuiteId::reference, procedure, body);
}

OSErr put(const char* procedure, PIActionReference reference, Form form) {
  return call(procedure,
              [&] { hostState().references.at(reference, procedure).append(std::move(form)); });
}

OSErr putName(const char* procedure, PIActionReference reference, DescriptorClassID desiredClass,
              const char* name) {
  if (name == nullptr) return call(procedure, [] { throw CallError{paramErr}; });
  return put(procedure, reference, {.form = kFormName, .desiredClass = desiredClass, .name = name});
}

/// The form that was put first. Throws errMissingParameter if there is none.
const Form& first(PIActionReference reference, const char* procedure) {
  const Forms forms = hostState().references.at(reference, procedure).forms();
  if (forms.empty()) throw CallError{errMissingParameter};
  return forms.front();
}

/// The form that was put first. Throws kWrongDataType if it is of another kind than `form`.
const Form& first(PIActionReference reference, DescriptorFormID form, const char* procedure) {
  const Form& found = first(reference, procedure);
  if (found.form != form) throw CallError{kWrongDataType};
  return found;
}

/// Puts a form with a value.
template <DescriptorFormID kForm, class T>
OSErr putValue(const char* procedure, PIActionReference reference, DescriptorClassID desiredClass,
               T value) {
  return put(
      procedure, reference,
      {.form = kForm, .desiredClass = desiredClass, .value = static_cast<std::uint32_t>(value)});
}

/// Reads the value of the first form, which must be `kForm`.
template <DescriptorFormID kForm, class T>
OSErr getValue(const char* procedure, PIActionReference reference, T* value) {
  return call(procedure, [&] {
    destination(value) = static_cast<T>(first(reference, kForm, procedure).value);
  });
}

OSErr make(const char* procedure, PIActionReference* reference) {
  return call(procedure, [&] {
    handOut(reference, [&] { return hostState().references.add({}, procedure); });
  });
}

OSErr free(const char* procedure, PIActionReference reference) {
  return hostRelease<OSErr>(SuiteId::reference, procedure,
                            [&] { hostState().references.free(reference, procedure); });
}

OSErr getForm(const char* procedure, PIActionReference reference, DescriptorFormID* form) {
  return call(procedure, [&] { destination(form) = first(reference, procedure).form; });
}

OSErr getDesiredClass(const char* procedure, PIActionReference reference,
                      DescriptorClassID* desiredClass) {
  return call(procedure,
              [&] { destination(desiredClass) = first(reference, procedure).desiredClass; });
}

OSErr getNameLength(const char* procedure, PIActionReference reference, uint32* length) {
  return call(procedure, [&] {
    const Form& form = first(reference, kFormName, procedure);
    destination(length) = static_cast<uint32>(form.name.size());
  });
}

OSErr getName(const char* procedure, PIActionReference reference, char* name, uint32 maxLength) {
  return call(procedure, [&] {
    copyText(first(reference, kFormName, procedure).name, &destination(name), maxLength);
  });
}

OSErr getEnumerated(const char* procedure, PIActionReference reference, DescriptorEnumTypeID* type,
                    DescriptorEnumID* value) {
  return call(procedure, [&] {
    const Form& form = first(reference, kFormEnumerated, procedure);
    destination(type) = form.enumType;
    destination(value) = form.value;
  });
}

OSErr getContainer(const char* procedure, PIActionReference reference,
                   PIActionReference* container) {
  return call(procedure, [&] {
    HostState& state = hostState();
    const SharedReference& chain = state.references.at(reference, procedure);
    PIActionReference& result = destination(container);
    const bool last = chain.forms().size() < 2;
    result = last ? nullptr : state.references.add(chain.rest(), procedure);
  });
}

OSErr putNameString(const char* procedure, PIActionReference reference,
                    DescriptorClassID desiredClass, ASZString name) {
  return call(procedure, [&] {
    HostState& state = hostState();
    Text text = textFrom(state.strings.at(name, procedure).text);
    state.references.at(reference, procedure)
        .append({.form = kFormName,
                 .desiredClass = desiredClass,
                 .name = std::move(text.utf8),
                 .exactName = std::move(text.exact)});
  });
}

OSErr getNameString(const char* procedure, PIActionReference reference, ASZString* name) {
  return call(procedure, [&] {
    const Form& form = first(reference, kFormName, procedure);
    handOut(name, [&] {
      return hostState().strings.add({unitsOf(form.name, form.exactName)}, procedure);
    });
  });
}

constexpr auto kProcedures = std::to_array<Procedure<PSActionReferenceProcs>>({
    row<"ActionReference.Make", &PSActionReferenceProcs::Make, make>,
    row<"ActionReference.Free", &PSActionReferenceProcs::Free, free>,
    row<"ActionReference.GetForm", &PSActionReferenceProcs::GetForm, getForm>,
    row<"ActionReference.GetDesiredClass", &PSActionReferenceProcs::GetDesiredClass,
        getDesiredClass>,
    row<"ActionReference.PutName", &PSActionReferenceProcs::PutName, putName>,
    row<"ActionReference.PutIndex", &PSActionReferenceProcs::PutIndex,
        putValue<kFormIndex, uint32>>,
    row<"ActionReference.PutIdentifier", &PSActionReferenceProcs::PutIdentifier,
        putValue<kFormIdentifier, uint32>>,
    row<"ActionReference.PutOffset", &PSActionReferenceProcs::PutOffset,
        putValue<kFormOffset, int32>>,
    row<"ActionReference.PutEnumerated", &PSActionReferenceProcs::PutEnumerated,
        [](const char* procedure, PIActionReference reference, DescriptorClassID desiredClass,
           DescriptorEnumTypeID type, DescriptorEnumID value) {
          return put(procedure, reference, {kFormEnumerated, desiredClass, type, value});
        }>,
    row<"ActionReference.PutProperty", &PSActionReferenceProcs::PutProperty,
        putValue<kFormProperty, DescriptorKeyID>>,
    row<"ActionReference.PutClass", &PSActionReferenceProcs::PutClass,
        [](const char* procedure, PIActionReference reference, DescriptorClassID desiredClass) {
          return put(procedure, reference, {.form = kFormClass, .desiredClass = desiredClass});
        }>,
    row<"ActionReference.GetNameLength", &PSActionReferenceProcs::GetNameLength, getNameLength>,
    row<"ActionReference.GetName", &PSActionReferenceProcs::GetName, getName>,
    row<"ActionReference.GetIndex", &PSActionReferenceProcs::GetIndex,
        getValue<kFormIndex, uint32>>,
    row<"ActionReference.GetIdentifier", &PSActionReferenceProcs::GetIdentifier,
        getValue<kFormIdentifier, uint32>>,
    row<"ActionReference.GetOffset", &PSActionReferenceProcs::GetOffset,
        getValue<kFormOffset, int32>>,
    row<"ActionReference.GetEnumerated", &PSActionReferenceProcs::GetEnumerated, getEnumerated>,
    row<"ActionReference.GetProperty", &PSActionReferenceProcs::GetProperty,
        getValue<kFormProperty, DescriptorKeyID>>,
    row<"ActionReference.GetContainer", &PSActionReferenceProcs::GetContainer, getContainer>,
    row<"ActionReference.PutNameZString", &PSActionReferenceProcs::PutNameZString, putNameString>,
    row<"ActionReference.GetNameZString", &PSActionReferenceProcs::GetNameZString, getNameString>,
});

}  // namespace
}  // namespace reference_suite

constinit const HostSuite<PSActionReferenceProcs> referenceSuite =
    suiteOf<reference_suite::kProcedures>();

}  // namespace simulator
