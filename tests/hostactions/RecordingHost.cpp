#include "tests/hostactions/RecordingHost.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "suites/Suites.h"

namespace testing_support {

namespace {

RecordingHost* currentRecorder = nullptr;

const PSActionDescriptorProcs* hostDescriptor = nullptr;
const PSActionReferenceProcs* hostReference = nullptr;
const PSActionControlProcs* hostControl = nullptr;

template <class Object>
OSErr noted(OSErr error, Object* object, const std::string& name) {
  if (error == 0 && currentRecorder != nullptr) currentRecorder->noteMade(*object, name);
  return error;
}

void noteFreed(const void* object) {
  if (currentRecorder != nullptr) currentRecorder->noteFreed(object);
}

OSErr makeDescriptor(PIActionDescriptor* descriptor) {
  return noted(hostDescriptor->Make(descriptor), descriptor, "descriptor");
}

OSErr freeDescriptor(PIActionDescriptor descriptor) {
  noteFreed(descriptor);
  return hostDescriptor->Free(descriptor);
}

OSErr getObject(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* type,
                PIActionDescriptor* value) {
  return noted(hostDescriptor->GetObject(descriptor, key, type, value), value,
               simulator::idText(key));
}

OSErr getString(PIActionDescriptor descriptor, DescriptorKeyID key, char* value, uint32 limit) {
  if (currentRecorder != nullptr) currentRecorder->textLimits.push_back(limit);
  return hostDescriptor->GetString(descriptor, key, value, limit);
}

OSErr makeReference(PIActionReference* reference) {
  return noted(hostReference->Make(reference), reference, "reference");
}

OSErr freeReference(PIActionReference reference) {
  noteFreed(reference);
  return hostReference->Free(reference);
}

OSErr get(PIActionDescriptor* descriptor, PIActionReference reference) {
  return noted(hostControl->Get(descriptor, reference), descriptor, "answer");
}

OSErr play(PIActionDescriptor* result, DescriptorEventID event, PIActionDescriptor descriptor,
           PIDialogPlayOptions dialog) {
  return noted(hostControl->Play(result, event, descriptor, dialog), result, "result");
}

OSErr typeIDToStringID(DescriptorTypeID typeID, char* stringID, uint32 size) {
  const OSErr error = hostControl->TypeIDToStringID(typeID, stringID, size);
  if (currentRecorder == nullptr) return error;
  currentRecorder->typeNameSizes.push_back(size);
  return currentRecorder->typeNameError != 0 ? currentRecorder->typeNameError : error;
}

/// Makes the forwarding copy of a suite. It is static, because the plug-in's holders may keep it
/// for the life of the process.
template <class Suite>
const void* forwarding(const void* suite, const Suite*& host, void (*forward)(Suite&)) {
  static Suite table;
  host = static_cast<const Suite*>(suite);
  table = *host;
  forward(table);
  return &table;
}

/// The forwarding copy of the suite `name`, or the suite itself if it has none.
const void* forwarding(const std::string& name, const void* suite) {
  if (name == kPSActionDescriptorSuite) {
    return forwarding<PSActionDescriptorProcs>(suite, hostDescriptor, [](auto& table) {
      table.Make = makeDescriptor;
      table.Free = freeDescriptor;
      table.GetObject = getObject;
      table.GetString = getString;
    });
  }
  if (name == kPSActionReferenceSuite) {
    return forwarding<PSActionReferenceProcs>(suite, hostReference, [](auto& table) {
      table.Make = makeReference;
      table.Free = freeReference;
    });
  }
  if (name == kPSActionControlSuite) {
    return forwarding<PSActionControlProcs>(suite, hostControl, [](auto& table) {
      table.Get = get;
      table.Play = play;
      table.TypeIDToStringID = typeIDToStringID;
    });
  }
  return suite;
}

SPErr acquireSuite(const char* name, int32 version, const void** suite) {
  const std::int32_t refused = currentRecorder != nullptr ? currentRecorder->refusal(name) : 0;
  if (refused != 0) return refused;
  const SPErr error = simulator::theHost().basicSuite()->AcquireSuite(name, version, suite);
  if (error == 0) *suite = forwarding(name, *suite);
  return error;
}

SPBasicSuite* recordingBasicSuite() {
  static SPBasicSuite suite = *simulator::theHost().basicSuite();
  suite.AcquireSuite = acquireSuite;
  return &suite;
}

}  // namespace

RecordingHost::RecordingHost() : host_(sSPBasic) {
  currentRecorder = this;
  sSPBasic = recordingBasicSuite();
  // Suites held from before are not forwarding copies.
  PIUSuitesRelease();
}

RecordingHost::~RecordingHost() {
  PIUSuitesRelease();
  sSPBasic = host_;
  currentRecorder = nullptr;
}

void RecordingHost::refuse(const std::string& suite, std::int32_t error, int times) {
  refusedSuite_ = suite;
  refusalError_ = error;
  refusals_ = times;
}

void RecordingHost::startOver() {
  PIUSuitesRelease();
  made.clear();
  freed.clear();
  textLimits.clear();
  typeNameSizes.clear();
}

void RecordingHost::noteMade(const void* object, const std::string& name) {
  const auto before = std::count_if(made.begin(), made.end(), [&](const std::string& other) {
    return other == name || other.starts_with(name + " ");
  });
  made.push_back(before == 0 ? name : name + " " + std::to_string(before + 1));
  live_.push_back({object, made.back()});
}

void RecordingHost::noteFreed(const void* object) {
  const auto known = std::find_if(live_.begin(), live_.end(),
                                  [&](const Live& live) { return live.object == object; });
  if (known == live_.end()) {
    ADD_FAILURE() << "freed what was not handed out, or freed twice";
    return;
  }
  freed.push_back(known->name);
  live_.erase(known);
}

std::int32_t RecordingHost::refusal(const std::string& suite) {
  if (suite != refusedSuite_ || refusals_ == 0) return 0;
  --refusals_;
  return refusalError_;
}

std::vector<std::string> keepMade(const std::vector<std::string>& order,
                                  const std::vector<std::string>& made) {
  std::vector<std::string> found;
  std::copy_if(order.begin(), order.end(), std::back_inserter(found), [&](const std::string& name) {
    return std::find(made.begin(), made.end(), name) != made.end();
  });
  return found;
}

}  // namespace testing_support
