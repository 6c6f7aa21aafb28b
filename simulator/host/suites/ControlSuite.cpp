// Getting properties, playing events, and the numbers of string IDs.
#include <utility>

#include "simulator/base/Log.h"
#include "simulator/base/Text.h"
#include "simulator/host/json/DescriptorJson.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/model/ModelPlay.h"
#include "simulator/host/model/ModelQuery.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace {

template <class Body>
OSErr call(const char* procedure, Body&& body) {
  return hostCall<OSErr>(SuiteId::control, procedure, std::forward<Body>(body));
}

Json jsonOf(PIActionReference reference) {
  const Reference* forms = hostState().references.peek(reference);
  return forms ? referenceToJson(*forms, hostState().ids) : Json(nullptr);
}

Json jsonOf(PIActionDescriptor descriptor) {
  const ContainerPtr* content = hostState().descriptors.peek(descriptor);
  return content ? descriptorToJson(**content, hostState().ids) : Json(nullptr);
}

void logGet(PIActionReference reference, OSErr result) {
  if (!theLog().enabled()) return;
  Json line = Json::object();
  line["reference"] = jsonOf(reference);
  line["result"] = result;
  theLog().write("get", std::move(line));
}

ContainerPtr answer(const Reference& reference) {
  HostState& state = hostState();
  const bool property = !reference.empty() && reference.front().form == kFormProperty;
  const auto given = property ? state.answers.find(reference.front().value) : state.answers.end();
  if (given != state.answers.end()) return std::make_shared<Container>(*given->second);
  return answerGet(state.model, reference, state.ids);
}

OSErr get(PIActionDescriptor* descriptor, PIActionReference reference) {
  constexpr const char* procedure = "ActionControl.Get";
  const std::lock_guard lock(hostState().mutex);
  const OSErr result = call(procedure, [&] {
    PIActionDescriptor& place = destination(descriptor);
    ContainerPtr content = answer(hostState().references.at(reference, procedure));
    place = hostState().descriptors.add(std::move(content), procedure);
  });
  logGet(reference, result);
  return result;
}

/// What an event is played with; a null descriptor stands for no parameters.
NestedContainer parametersOf(PIActionDescriptor descriptor, const char* procedure) {
  if (descriptor == nullptr) return std::make_shared<Container>();
  return hostState().descriptors.at(descriptor, procedure);
}

OSErr play(PIActionDescriptor* result, DescriptorEventID event, PIActionDescriptor descriptor,
           PIDialogPlayOptions dialog) {
  constexpr const char* procedure = "ActionControl.Play";
  HostState& state = hostState();
  const std::lock_guard lock(state.mutex);
  // The log tells the parameters as they are given.
  Json line = Json::object();
  if (theLog().enabled()) {
    line["event"] = idText(event);
    line["descriptor"] = jsonOf(descriptor);
    line["dialog"] = dialog;
  }
  const OSErr error = call(procedure, [&] {
    PIActionDescriptor& place = destination(result);
    const NestedContainer parameters = parametersOf(descriptor, procedure);
    place = state.descriptors.add(playEvent(state.model, event, *parameters, state.ids), procedure);
  });
  line["result"] = error;
  theLog().write("play", std::move(line));
  return error;
}

// Profiling leaves no trace.
OSErr beginProfile(DescriptorEventID) {
  return call("ActionControl.BeginProfile", [] {});
}

OSErr endProfile(DescriptorEventID) {
  return call("ActionControl.EndProfile", [] {});
}

OSErr stringIDToTypeID(const char* stringID, DescriptorTypeID* typeID) {
  return call("ActionControl.StringIDToTypeID", [&] {
    if (destination(stringID) == '\0') throw CallError{paramErr};
    destination(typeID) = hostState().ids.idOf(stringID);
  });
}

OSErr typeIDToStringID(DescriptorTypeID typeID, char* stringID, uint32 size) {
  return call("ActionControl.TypeIDToStringID", [&] {
    const std::string* string = hostState().ids.stringOf(typeID);
    if (string == nullptr) throw CallError{errMissingParameter};
    copyText(*string, &destination(stringID), size);
  });
}

}  // namespace

const PSActionControlProcs controlSuite = {
    .Play = play,
    .BeginProfile = beginProfile,
    .EndProfile = endProfile,
    .Get = get,
    .StringIDToTypeID = stringIDToTypeID,
    .TypeIDToStringID = typeIDToStringID,
};

}  // namespace simulator
