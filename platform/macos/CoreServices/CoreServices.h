// The file manager's folders and aliases, and the tasks of Multiprocessing Services.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <MacTypes.h>

/// An opaque reference to an existing file or folder.
struct FSRef {
  UInt8 hidden[80];
};

/// The header of an alias, a record from which a file can be found even if its path has changed:
/// a value for the application's use and the size in bytes of the whole record.
struct AliasRecord {
  OSType userType;
  unsigned short aliasSize;
};
using AliasPtr = AliasRecord*;
using AliasHandle = AliasPtr*;

using FSAliasInfoBitmap = UInt32;
struct FSAliasInfo;
struct HFSUniStr255;

using FSVolumeRefNum = SInt16;
using MPTaskID = struct OpaqueMPTaskID*;
using MPQueueID = struct OpaqueMPQueueID*;
using MPTaskOptions = OptionBits;
using TaskProc = OSStatus (*)(void* parameter);

enum : FSVolumeRefNum { kUserDomain = -32763 };
enum : OSType { kPreferencesFolderType = fourCharCode("pref") };
enum : Boolean { kDontCreateFolder = 0, kCreateFolder = 1 };

extern "C" {

/// Finds a standard folder; creates it if `createFolder` is set and it does not exist. fnfErr if it
/// is not found. [any-thread]
OSErr FSFindFolder(FSVolumeRefNum vRefNum, OSType folderType, Boolean createFolder,
                   FSRef* foundRef);

/// Writes the POSIX path of `ref` with a terminating zero byte. fnfErr if the reference is invalid,
/// another error if the path does not fit into `pathBufferSize` bytes. [any-thread]
OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 pathBufferSize);

/// Finds the file or folder to which an alias refers; tries the path relative to `fromFile` first
/// if that is not null. Sets `wasChanged` if it updated the alias. paramErr for a null alias,
/// fnfErr if the file is not found. [any-thread]
OSErr FSResolveAlias(const FSRef* fromFile, AliasHandle alias, FSRef* target, Boolean* wasChanged);

/// Copies what the record itself says, without looking for the file: its POSIX path into a string
/// that the caller releases, null if the record has none. Each result may be null. paramErr for a
/// null alias. [any-thread]
OSStatus FSCopyAliasInfo(AliasHandle inAlias, HFSUniStr255* targetName, HFSUniStr255* volumeName,
                         CFStringRef* pathString, FSAliasInfoBitmap* whichInfo, FSAliasInfo* info);

/// The size of an alias record in bytes. [any-thread]
Size GetAliasSize(AliasHandle alias);

/// Copies `size` bytes into a new handle, which is disposed of as a regular one. memFullErr if
/// there is no memory. [any-thread]
OSErr PtrToHand(const void* srcPtr, Handle* dstHndl, long size);

/// Starts a preemptive task with a stack of `stackSize` bytes and writes its id to `task`, which is
/// not documented to be optional. `notifyQueue` and the termination parameters may be null. Returns
/// an error if the task cannot be started. [any-thread]
OSStatus MPCreateTask(TaskProc entryPoint, void* parameter, ByteCount stackSize,
                      MPQueueID notifyQueue, void* terminationParameter1,
                      void* terminationParameter2, MPTaskOptions options, MPTaskID* task);
}
