// The event manager and the text input sources.
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

/// Bits of the keyboard modifiers.
enum { cmdKey = 0x0100, optionKey = 0x0800 };

extern "C" {

/// An event of its own with one reference, which the caller releases. [any-thread]
OSStatus CreateEvent(CFAllocatorRef inAllocator, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes inAttributes, EventRef* outEvent);
void ReleaseEvent(EventRef inEvent);

OSType GetEventClass(EventRef inEvent);
UInt32 GetEventKind(EventRef inEvent);

/// Keeps a copy of `inSize` bytes under the name, in place of what the name had. [any-thread]
OSStatus SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType,
                           ByteCount inSize, const void* inDataPtr);

/// Reads a parameter; `eventParameterNotFoundErr` where the event has none of that name.
/// [any-thread]
OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                           EventParamType* outActualType, ByteCount inBufferSize,
                           ByteCount* outActualSize, void* outData);

/// The queue of the main thread. [any-thread]
EventQueueRef GetMainEventQueue();

/// Queues the event behind those of its priority; the queue keeps a reference of its own.
/// `eventAlreadyPostedErr` where it waits in a queue already. [any-thread]
OSStatus PostEventToQueue(EventQueueRef inQueue, EventRef inEvent, EventPriority inPriority);

/// The target through which every event of the process goes; its handlers run on the main thread.
EventTargetRef GetEventDispatcherTarget();

/// Installs a handler; of several the one installed last is called first. [any-thread]
OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                             ItemCount inNumTypes, const EventTypeSpec* inList, void* inUserData,
                             EventHandlerRef* outRef);
OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef);

/// Passes the event on to the handler below the one that is running. [main-thread]
OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent);

/// Runs the calling thread's event loop for so many seconds, for ever where negative.
OSStatus RunCurrentEventLoop(EventTimeout inTimeout);

/// The keyboard modifiers that are down now. [any-thread]
UInt32 GetCurrentKeyModifiers();

/// The keyboard input source in use; the caller releases it. [main-thread]
TISInputSourceRef TISCopyCurrentKeyboardInputSource();

/// A property of an input source, lent; null where it has none of that key.
void* TISGetInputSourceProperty(TISInputSourceRef inputSource, CFStringRef propertyKey);

extern const CFStringRef kTISPropertyInputSourceID;
}
