// References: chains of forms.
#include <algorithm>
#include <cstring>
#include <utility>

#include "simulator/base/Text.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace {

template <class Body>
OSErr call(const char* procedure, Body&& body) {
  return hostCall<OSErr>(SuiteId::reference, procedure, std::forward<Body>(body));
}

OSErr put(const char* procedure, PIActionReference reference, Form form) {
  return call(procedure,
              [&] { hostState().references.at(reference, procedure).push_back(std::move(form)); });
}

OSErr putName(const char* procedure, PIActionReference reference, DescriptorClassID desiredClass,
              const char* name) {
  if (name == nullptr) return call(procedure, [] { throw CallError{paramErr}; });
  return put(procedure, reference, {.form = kFormName, .desiredClass = desiredClass, .name = name});
}

/// The form that was put first.
const Form& first(PIActionReference reference, const char* procedure) {
  const Reference& forms = hostState().references.at(reference, procedure);
  if (forms.empty()) throw CallError{errMissingParameter};
  return forms.front();
}

const Form& first(PIActionReference reference, DescriptorFormID form, const char* procedure) {
  const Form& found = first(reference, procedure);
  if (found.form != form) throw CallError{kWrongDataType};
  return found;
}

/// Reads one member of the first form, which must be `form`.
template <class T>
OSErr get(const char* procedure, PIActionReference reference, DescriptorFormID form, T* value) {
  return call(procedure, [&] {
    destination(value) = static_cast<T>(first(reference, form, procedure).value);
  });
}

OSErr make(PIActionReference* reference) {
  constexpr const char* procedure = "ActionReference.Make";
  return call(procedure, [&] {
    handOut(reference, [&] { return hostState().references.add({}, procedure); });
  });
}

OSErr free(PIActionReference reference) {
  constexpr const char* procedure = "ActionReference.Free";
  return hostRelease<OSErr>(SuiteId::reference, procedure,
                            [&] { hostState().references.free(reference, procedure); });
}

OSErr getForm(PIActionReference reference, DescriptorFormID* form) {
  constexpr const char* procedure = "ActionReference.GetForm";
  return call(procedure, [&] { destination(form) = first(reference, procedure).form; });
}

OSErr getDesiredClass(PIActionReference reference, DescriptorClassID* desiredClass) {
  constexpr const char* procedure = "ActionReference.GetDesiredClass";
  return call(procedure,
              [&] { destination(desiredClass) = first(reference, procedure).desiredClass; });
}

OSErr getNameLength(PIActionReference reference, uint32* length) {
  constexpr const char* procedure = "ActionReference.GetNameLength";
  return call(procedure, [&] {
    const Form& form = first(reference, kFormName, procedure);
    destination(length) = static_cast<uint32>(form.name.size());
  });
}

OSErr getName(PIActionReference reference, char* name, uint32 maxLength) {
  constexpr const char* procedure = "ActionReference.GetName";
  return call(procedure, [&] {
    copyText(first(reference, kFormName, procedure).name, &destination(name), maxLength);
  });
}

OSErr getEnumerated(PIActionReference reference, DescriptorEnumTypeID* type,
                    DescriptorEnumID* value) {
  constexpr const char* procedure = "ActionReference.GetEnumerated";
  return call(procedure, [&] {
    const Form& form = first(reference, kFormEnumerated, procedure);
    destination(type) = form.enumType;
    destination(value) = form.value;
  });
}

OSErr getContainer(PIActionReference reference, PIActionReference* container) {
  constexpr const char* procedure = "ActionReference.GetContainer";
  return call(procedure, [&] {
    HostState& state = hostState();
    const Reference& forms = state.references.at(reference, procedure);
    PIActionReference& result = destination(container);
    const bool last = forms.size() < 2;
    result =
        last ? nullptr : state.references.add(Reference(forms.begin() + 1, forms.end()), procedure);
  });
}

OSErr putNameString(PIActionReference reference, DescriptorClassID desiredClass, ASZString name) {
  constexpr const char* procedure = "ActionReference.PutNameZString";
  return call(procedure, [&] {
    HostState& state = hostState();
    std::string text = utf8From(state.strings.at(name, procedure).text);
    state.references.at(reference, procedure)
        .push_back({.form = kFormName, .desiredClass = desiredClass, .name = std::move(text)});
  });
}

OSErr getNameString(PIActionReference reference, ASZString* name) {
  constexpr const char* procedure = "ActionReference.GetNameZString";
  return call(procedure, [&] {
    const Form& form = first(reference, kFormName, procedure);
    handOut(name, [&] { return hostState().strings.add({utf16From(form.name)}, procedure); });
  });
}

}  // namespace

const PSActionReferenceProcs referenceSuite = {
    .Make = make,
    .Free = free,
    .GetForm = getForm,
    .GetDesiredClass = getDesiredClass,
    .PutName =
        [](PIActionReference reference, DescriptorClassID desiredClass, const char* name) {
          return putName("ActionReference.PutName", reference, desiredClass, name);
        },
    .PutIndex =
        [](PIActionReference reference, DescriptorClassID desiredClass, uint32 index) {
          return put("ActionReference.PutIndex", reference,
                     {.form = kFormIndex, .desiredClass = desiredClass, .value = index});
        },
    .PutIdentifier =
        [](PIActionReference reference, DescriptorClassID desiredClass, uint32 identifier) {
          return put("ActionReference.PutIdentifier", reference,
                     {.form = kFormIdentifier, .desiredClass = desiredClass, .value = identifier});
        },
    .PutOffset =
        [](PIActionReference reference, DescriptorClassID desiredClass, int32 offset) {
          return put("ActionReference.PutOffset", reference,
                     {.form = kFormOffset,
                      .desiredClass = desiredClass,
                      .value = static_cast<std::uint32_t>(offset)});
        },
    .PutEnumerated =
        [](PIActionReference reference, DescriptorClassID desiredClass, DescriptorEnumTypeID type,
           DescriptorEnumID value) {
          return put("ActionReference.PutEnumerated", reference,
                     {kFormEnumerated, desiredClass, type, value});
        },
    .PutProperty =
        [](PIActionReference reference, DescriptorClassID desiredClass, DescriptorKeyID key) {
          return put("ActionReference.PutProperty", reference,
                     {.form = kFormProperty, .desiredClass = desiredClass, .value = key});
        },
    .PutClass =
        [](PIActionReference reference, DescriptorClassID desiredClass) {
          return put("ActionReference.PutClass", reference,
                     {.form = kFormClass, .desiredClass = desiredClass});
        },
    .GetNameLength = getNameLength,
    .GetName = getName,
    .GetIndex =
        [](PIActionReference reference, uint32* index) {
          return get("ActionReference.GetIndex", reference, kFormIndex, index);
        },
    .GetIdentifier =
        [](PIActionReference reference, uint32* identifier) {
          return get("ActionReference.GetIdentifier", reference, kFormIdentifier, identifier);
        },
    .GetOffset =
        [](PIActionReference reference, int32* offset) {
          return get("ActionReference.GetOffset", reference, kFormOffset, offset);
        },
    .GetEnumerated = getEnumerated,
    .GetProperty =
        [](PIActionReference reference, DescriptorKeyID* key) {
          return get("ActionReference.GetProperty", reference, kFormProperty, key);
        },
    .GetContainer = getContainer,
    .PutNameZString = putNameString,
    .GetNameZString = getNameString,
};

}  // namespace simulator
