// The event manager and the text input sources.
//
// The marks of threads here and in the neighbouring headers repeat what the platform's headers say:
//   [any-thread]              "Thread safe"
//   [main-thread]             "Not thread safe", or confined to the main thread
//   [not documented as safe]  nothing, so nothing promises that other threads may call it
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <CoreServices/CoreServices.h>

using EventRef = struct OpaqueEventRef*;
using EventQueueRef = struct OpaqueEventQueueRef*;
using EventTargetRef = struct OpaqueEventTargetRef*;
using EventHandlerRef = struct OpaqueEventHandlerRef*;
using EventHandlerCallRef = struct OpaqueEventHandlerCallRef*;
using EventTime = double;
using EventTimeout = EventTime;
using EventAttributes = UInt32;
using EventPriority = SInt16;
using EventParamName = OSType;
using EventParamType = OSType;
using EventHandlerUPP = OSStatus (*)(EventHandlerCallRef inHandlerCallRef, EventRef inEvent,
                                     void* inUserData);
using WindowRef = struct OpaqueWindowPtr*;
using ControlRef = struct OpaqueControlRef*;
using TISInputSourceRef = struct __TISInputSource*;

struct EventTypeSpec {
  OSType eventClass;
  UInt32 eventKind;
};

enum {
  eventAlreadyPostedErr = -9860,
  eventHandlerAlreadyInstalledErr = -9866,
  eventParameterNotFoundErr = -9870,
  eventNotHandledErr = -9874
};

enum : EventAttributes { kEventAttributeUserEvent = 1 };
enum : EventPriority { kEventPriorityLow = 0, kEventPriorityStandard = 1, kEventPriorityHigh = 2 };

enum : OSType {
  kEventClassMouse = fourCharCode("mous"),
  kEventClassKeyboard = fourCharCode("keyb"),
  kEventClassApplication = fourCharCode("appl")
};
enum : UInt32 { kEventMouseDown = 1, kEventMouseUp = 2, kEventMouseMoved = 5 };
enum : UInt32 { kEventRawKeyDown = 1, kEventRawKeyUp = 3 };
enum : UInt32 { kEventAppActivated = 1, kEventAppDeactivated = 2 };

enum : EventParamName {
  kEventParamKeyCode = fourCharCode("kcod"),
  kEventParamKeyMacCharCodes = fourCharCode("kchr"),
  kEventParamKeyModifiers = fourCharCode("kmod"),
  kEventParamMouseDelta = fourCharCode("mdta")
};
enum : EventParamType {
  typeChar = fourCharCode("TEXT"),
  typeSInt16 = fourCharCode("shor"),
  typeUInt32 = fourCharCode("magn"),
  typeSInt64 = fourCharCode("comp"),
  typeHIPoint = fourCharCode("hipt")
};

/// Bits of the modifier keys.
enum { cmdKey = 0x0100, optionKey = 0x0800 };

extern "C" {

/// Makes an event with one reference, which the caller releases. `inWhen` is in seconds since
/// start-up. memFullErr if there is no memory. [any-thread]
OSStatus CreateEvent(CFAllocatorRef inAllocator, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes inAttributes, EventRef* outEvent);

/// Gives up one reference. [any-thread]
void ReleaseEvent(EventRef inEvent);

/// The class and the kind of an event. [any-thread]
OSType GetEventClass(EventRef inEvent);
UInt32 GetEventKind(EventRef inEvent);

/// Stores a copy of `inSize` bytes as the parameter `inName`, replacing a previous value.
/// [any-thread] for an event that no other thread uses, otherwise [main-thread]
OSStatus SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType,
                           ByteCount inSize, const void* inDataPtr);

/// Copies at most `inBufferSize` bytes of a parameter to `outData`. The out parameters may be null;
/// if `outData` is null, `inBufferSize` must be 0. eventParameterNotFoundErr if the event has no
/// parameter `inName`; another error if it cannot be converted to `inDesiredType`. [main-thread]
OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                           EventParamType* outActualType, ByteCount inBufferSize,
                           ByteCount* outActualSize, void* outData);

/// The queue of the main thread. [any-thread]
EventQueueRef GetMainEventQueue();

/// Queues the event after those of the same priority and retains it. eventAlreadyPostedErr if it is
/// in a queue already. [any-thread]
OSStatus PostEventToQueue(EventQueueRef inQueue, EventRef inEvent, EventPriority inPriority);

/// The target that receives every event of the process; its handlers run on the main thread.
/// [main-thread]; the device thread calls it, too, which is not documented as safe
EventTargetRef GetEventDispatcherTarget();

/// Installs a handler for `inNumTypes` event types; handlers installed later are called first.
/// `outRef` may be null. eventHandlerAlreadyInstalledErr if `inHandler` is installed on the target
/// for one of the types. [main-thread]; the device thread calls it, too, which is not documented as
/// safe
OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                             ItemCount inNumTypes, const EventTypeSpec* inList, void* inUserData,
                             EventHandlerRef* outRef);

/// Removes a handler, also one that is running; an error if it is not installed. [main-thread]
OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef);

/// Passes the event to the handlers that follow the running one and returns their result:
/// eventNotHandledErr if none of them handled it. REQUIRES: a handler that was given `inCallRef` is
/// running. [main-thread]
OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent);

/// Runs the calling thread's event loop for `inTimeout` seconds, forever if negative. Returns an
/// error when the time is over. [any-thread]
OSStatus RunCurrentEventLoop(EventTimeout inTimeout);

/// The modifier keys that are down. [main-thread]; the device thread calls it, too, which is not
/// documented as safe
UInt32 GetCurrentKeyModifiers();

/// The current keyboard input source; the caller releases it. [main-thread]
TISInputSourceRef TISCopyCurrentKeyboardInputSource();

/// A property of an input source, null if it does not have this key. The caller does not own it.
/// [main-thread]
void* TISGetInputSourceProperty(TISInputSourceRef inputSource, CFStringRef propertyKey);

/// The key of an input source's identifier, a CFStringRef.
extern const CFStringRef kTISPropertyInputSourceID;
}
