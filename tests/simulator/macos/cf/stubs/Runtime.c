/* As much of the Swift runtime and of Foundation's classes as Apple's Core Foundation needs. */
#include <stdint.h>
#include <stdlib.h>

#define CLASS(name) void* name[16]

CLASS($s10Foundation10__NSCFTypeCN);
CLASS($s10Foundation13NSMutableDataCN);
CLASS($s10Foundation13__NSCFBooleanCN);
CLASS($s10Foundation19_NSCFConstantStringCN);
CLASS($s10Foundation6NSNullCN);
CLASS($s10Foundation8NSNumberCN);

/* Of the run loop, which is left out. */
CLASS(__CFRunLoopClass);
CLASS(__CFRunLoopModeClass);
CLASS(__CFRunLoopObserverClass);
CLASS(__CFRunLoopSourceClass);
CLASS(__CFRunLoopTimerClass);
const void* kCFRunLoopDefaultMode;

uintptr_t __CFSwiftGetBaseClass(void) { return (uintptr_t)$s10Foundation10__NSCFTypeCN; }
void __CFInitializeSwift(void) {}
void libdispatch_init(void) {}

/* Objects live until the program ends. */
void* swift_allocObject(uintptr_t class, size_t size, size_t alignment) {
  uintptr_t* object = calloc(1, size + alignment);
  object[0] = class;
  return object;
}
void* swift_retain(void* object) { return object; }
void swift_release(void* object) { (void)object; }
