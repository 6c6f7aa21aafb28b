// The file manager's folders and the tasks of Multiprocessing Services.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <MacTypes.h>

/// An opaque reference to an existing file or folder.
struct FSRef {
  UInt8 hidden[80];
};

/// The head of an alias, a record that finds a file again by more than its path: data of the
/// application's own and the size of the whole record.
struct AliasRecord {
  OSType userType;
  unsigned short aliasSize;
};
using AliasPtr = AliasRecord*;
using AliasHandle = AliasPtr*;

using FSVolumeRefNum = SInt16;
using MPTaskID = struct OpaqueMPTaskID*;
using MPQueueID = struct OpaqueMPQueueID*;
using MPTaskOptions = OptionBits;
using TaskProc = OSStatus (*)(void* parameter);

enum : FSVolumeRefNum { kUserDomain = -32763 };
enum : OSType { kPreferencesFolderType = fourCharCode("pref") };
enum : Boolean { kDontCreateFolder = 0, kCreateFolder = 1 };

extern "C" {

/// Finds one of the system's folders, making it where `createFolder` says so. [any-thread]
OSErr FSFindFolder(FSVolumeRefNum vRefNum, OSType folderType, Boolean createFolder,
                   FSRef* foundRef);

/// Writes the POSIX path of `ref` with a terminating zero byte. [any-thread]
OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 pathBufferSize);

/// Finds the file or folder that an alias leads to, by a path relative to `fromFile` first where
/// that is not null. `wasChanged` tells whether the alias was brought up to date. [any-thread]
OSErr FSResolveAlias(const FSRef* fromFile, AliasHandle alias, FSRef* target, Boolean* wasChanged);

/// Starts a preemptive task with a stack of `stackSize` bytes. `notifyQueue`, the termination
/// parameters and `task` may be null. [any-thread]
OSStatus MPCreateTask(TaskProc entryPoint, void* parameter, ByteCount stackSize,
                      MPQueueID notifyQueue, void* terminationParameter1,
                      void* terminationParameter2, MPTaskOptions options, MPTaskID* task);
}
