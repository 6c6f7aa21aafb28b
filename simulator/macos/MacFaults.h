// The platform's calls that can be made to fail.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace simulator {

/// The calls, under the platform's own names. The last three are messages: the application's, the
/// window's and the window's again.
enum class MacCall {
  kCreateEvent,
  kSetEventParameter,
  kGetEventParameter,
  kGetMainEventQueue,
  kPostEventToQueue,
  kGetEventDispatcherTarget,
  kInstallEventHandler,
  kRemoveEventHandler,
  kRunCurrentEventLoop,
  kMPCreateTask,
  kTISCopyCurrentKeyboardInputSource,
  kTISGetInputSourceProperty,
  kCGEventCreateKeyboardEvent,
  kCGEventCreateScrollWheelEvent,
  kCGSetLocalEventsSuppressionInterval,
  kCGRegisterScreenRefreshCallback,
  kCFStringCreateWithCharacters,
  kCFStringGetCString,
  kCFDataCreate,
  kCFURLCreateFromFSRef,
  kCFURLCreateFromFileSystemRepresentation,
  kCFURLCopyFileSystemPath,
  kCFURLGetFileSystemRepresentation,
  kCFURLCreateBookmarkData,
  kCFURLCreateByResolvingBookmarkData,
  kCFURLCreateResourcePropertyForKeyFromBookmarkData,
  kFSFindFolder,
  kFSRefMakePath,
  kFSResolveAlias,
  kFSCopyAliasInfo,
  kPtrToHand,
  kMainWindow,
  kContentView,
  kScreen,
};

/// Counts a call. If it must fail: the error that it returns; a call that returns an object returns
/// null instead, and one that returns a truth value false. Nothing else may happen then.
/// [any-thread]
std::optional<std::int32_t> failureOf(MacCall call);

/// The names of all these calls, such as "Mac.CreateEvent" and "Mac.mainWindow". [any-thread]
std::vector<std::string_view> macProcedures();

}  // namespace simulator
