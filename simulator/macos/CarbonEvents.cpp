// The event manager's public C functions.
#include <Carbon/Carbon.h>
#include <fmt/format.h>

#include "simulator/macos/EventManager.h"
#include "simulator/macos/ThreadRules.h"

using namespace simulator;

OSStatus CreateEvent(CFAllocatorRef, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes, EventRef* outEvent) {
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
  return theEventManager().getParameter(inEvent, inName, inDesiredType, outActualType,
                                        {static_cast<std::byte*>(outData), inBufferSize},
                                        outActualSize);
}

EventQueueRef GetMainEventQueue() { return theEventManager().mainQueue(); }

OSStatus PostEventToQueue(EventQueueRef inQueue, EventRef inEvent, EventPriority inPriority) {
  return theEventManager().post(inQueue, inEvent, inPriority);
}

EventTargetRef GetEventDispatcherTarget() {
  requireMainThread("GetEventDispatcherTarget");
  return theEventManager().dispatcher();
}

OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                             ItemCount inNumTypes, const EventTypeSpec* inList, void* inUserData,
                             EventHandlerRef* outRef) {
  requireMainThread("InstallEventHandler");
  return theEventManager().install(inTarget, inHandler, {inList, inNumTypes}, inUserData, outRef);
}

OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef) {
  requireMainThread("RemoveEventHandler");
  return theEventManager().remove(inHandlerRef);
}

OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent) {
  requireMainThread("CallNextEventHandler");
  return theEventManager().callNext(inCallRef, inEvent);
}
