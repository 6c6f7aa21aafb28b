// The event manager's public C functions.
#include <Carbon/Carbon.h>
#include <fmt/format.h>

#include "simulator/macos/EventManager.h"
#include "simulator/macos/MacFaults.h"
#include "simulator/macos/ThreadRules.h"

using namespace simulator;

OSStatus CreateEvent(CFAllocatorRef, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes, EventRef* outEvent) {
  if (const auto error = failureOf(MacCall::kCreateEvent)) return *error;
  const EventRef event = theEventManager().create(inClassID, inKind, inWhen);
  if (event == nullptr) return memFullErr;
  *outEvent = event;
  return noErr;
}

void ReleaseEvent(EventRef inEvent) { theEventManager().release(inEvent); }

OSType GetEventClass(EventRef inEvent) { return theEventManager().classOf(inEvent); }

UInt32 GetEventKind(EventRef inEvent) { return theEventManager().kindOf(inEvent); }

OSStatus SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType,
                           ByteCount inSize, const void* inDataPtr) {
  requireMainThread("SetEventParameter");
  if (const auto error = failureOf(MacCall::kSetEventParameter)) return *error;
  return theEventManager().setParameter(inEvent, inName, inType,
                                        {static_cast<const std::byte*>(inDataPtr), inSize});
}

OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                           EventParamType* outActualType, ByteCount inBufferSize,
                           ByteCount* outActualSize, void* outData) {
  requireMainThread("GetEventParameter");
  if (outData == nullptr && inBufferSize != 0) {
    theLog().misuse(fmt::format("GetEventParameter: a size of {} without a buffer", inBufferSize));
    return paramErr;
  }
  if (const auto error = failureOf(MacCall::kGetEventParameter)) return *error;
  return theEventManager().getParameter(inEvent, inName, inDesiredType, outActualType,
                                        {static_cast<std::byte*>(outData), inBufferSize},
                                        outActualSize);
}

EventQueueRef GetMainEventQueue() {
  if (failureOf(MacCall::kGetMainEventQueue)) return nullptr;
  return theEventManager().mainQueue();
}

OSStatus PostEventToQueue(EventQueueRef inQueue, EventRef inEvent, EventPriority inPriority) {
  if (const auto error = failureOf(MacCall::kPostEventToQueue)) return *error;
  return theEventManager().post(inQueue, inEvent, inPriority);
}

EventTargetRef GetEventDispatcherTarget() {
  requireMainThread("GetEventDispatcherTarget");
  if (failureOf(MacCall::kGetEventDispatcherTarget)) return nullptr;
  return theEventManager().dispatcher();
}

OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                             ItemCount inNumTypes, const EventTypeSpec* inList, void* inUserData,
                             EventHandlerRef* outRef) {
  requireMainThread("InstallEventHandler");
  if (const auto error = failureOf(MacCall::kInstallEventHandler)) return *error;
  return theEventManager().install(inTarget, inHandler, {inList, inNumTypes}, inUserData, outRef);
}

OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef) {
  requireMainThread("RemoveEventHandler");
  if (const auto error = failureOf(MacCall::kRemoveEventHandler)) return *error;
  return theEventManager().remove(inHandlerRef);
}

OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent) {
  requireMainThread("CallNextEventHandler");
  return theEventManager().callNext(inCallRef, inEvent);
}
