// Gets properties, plays events, and converts between string IDs and numbers.
#include <utility>

#include "simulator/base/Log.h"
#include "simulator/base/Text.h"
#include "simulator/host/json/DescriptorJson.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/model/ModelPlay.h"
#include "simulator/host/model/ModelQuery.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace control_suite {
namespace {

OSErr call(const char* procedure, ProcedureBody body) {
  return hostCall<OSErr>(SuiteId::control, procedure, body);
}

Json jsonOf(PIActionReference reference) {
  const SharedReference* content = hostState().references.peek(reference);
  return content ? referenceToJson(content->forms(), hostState().ids) : Json(nullptr);
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
  theLog().writeObject("get", line);
}

ContainerPtr answer(Forms reference) {
  HostState& state = hostState();
  const bool property = !reference.empty() && reference.front().form == kFormProperty;
  const auto given = property ? state.answers.find(reference.front().value) : state.answers.end();
  if (given != state.answers.end()) return std::make_shared<Container>(*given->second);
  return answerGet(state.model, reference, state.ids);
}

OSErr get(const char* procedure, PIActionDescriptor* descriptor, PIActionReference reference) {
  const std::lock_guard lock(hostState().mutex);
  const OSErr result = call(procedure, [&] {
    PIActionDescriptor& place = destination(descriptor);
    ContainerPtr content = answer(hostState().references.at(reference, procedure).forms());
    place = hostState().descriptors.add(std::move(content), procedure);
  });
  logGet(reference, result);
  return result;
}

/// The parameters of an event; a null descriptor means none.
NestedContainer parametersOf(PIActionDescriptor descriptor, const char* procedure) {
  if (descriptor == nullptr) return std::make_shared<Container>();
  return hostState().descriptors.at(descriptor, procedure);
}

Json jsonOf(const NestedContainer& parameters) {
  return parameters ? descriptorToJson(*parameters, hostState().ids) : Json(nullptr);
}

/// Logs a step that the host played as part of an action.
void logStep(const PlayedStep& played) {
  if (!theLog().enabled()) return;
  const RecordedStep& step = played.action.steps[played.step];
  Json line = Json::object();
  line["event"] = idText(step.event);
  line["descriptor"] = jsonOf(step.parameters);
  line["dialog"] = step.dialog;
  line["result"] = played.result;
  line["recorded"] = {{"set", wellFormed(played.set.name)},
                      {"action", wellFormed(played.action.name)},
                      {"step", played.step + 1}};
  theLog().writeObject("play", line);
}

OSErr play(const char* procedure, PIActionDescriptor* result, DescriptorEventID event,
           PIActionDescriptor descriptor, PIDialogPlayOptions dialog) {
  HostState& state = hostState();
  const std::lock_guard lock(state.mutex);
  // Taken before the event is played, so the log has the parameters as they were given.
  Json line = Json::object();
  if (theLog().enabled()) {
    line["event"] = idText(event);
    line["descriptor"] = jsonOf(descriptor);
    line["dialog"] = dialog;
  }
  const OSErr error = call(procedure, [&] {
    PIActionDescriptor& place = destination(result);
    const NestedContainer parameters = parametersOf(descriptor, procedure);
    place = state.descriptors.add(playEvent(state.model, event, *parameters, state.ids, logStep),
                                  procedure);
  });
  line["result"] = error;
  theLog().writeObject("play", line);
  return error;
}

// Profiling has no effect.
OSErr beginProfile(const char* procedure, DescriptorEventID) {
  return call(procedure, [] {});
}

OSErr endProfile(const char* procedure, DescriptorEventID) {
  return call(procedure, [] {});
}

OSErr stringIDToTypeID(const char* procedure, const char* stringID, DescriptorTypeID* typeID) {
  return call(procedure, [&] {
    if (destination(stringID) == '\0') throw CallError{paramErr};
    destination(typeID) = hostState().ids.idOf(stringID);
  });
}

OSErr typeIDToStringID(const char* procedure, DescriptorTypeID typeID, char* stringID,
                       uint32 size) {
  return call(procedure, [&] {
    const std::string* string = hostState().ids.stringOf(typeID);
    if (string == nullptr) throw CallError{errMissingParameter};
    copyText(*string, &destination(stringID), size);
  });
}

constexpr auto kProcedures = std::to_array<Procedure<PSActionControlProcs>>({
    row<"ActionControl.Play", &PSActionControlProcs::Play, play>,
    row<"ActionControl.BeginProfile", &PSActionControlProcs::BeginProfile, beginProfile>,
    row<"ActionControl.EndProfile", &PSActionControlProcs::EndProfile, endProfile>,
    row<"ActionControl.Get", &PSActionControlProcs::Get, get>,
    row<"ActionControl.StringIDToTypeID", &PSActionControlProcs::StringIDToTypeID,
        stringIDToTypeID>,
    row<"ActionControl.TypeIDToStringID", &PSActionControlProcs::TypeIDToStringID,
        typeIDToStringID>,
});

}  // namespace
}  // namespace control_suite

constinit const HostSuite<PSActionControlProcs> controlSuite =
    suiteOf<control_suite::kProcedures>();

}  // namespace simulator
