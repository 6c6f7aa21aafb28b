#include "simulator/macos/MacFaults.h"

#include <array>

#include "simulator/base/Faults.h"

namespace simulator {

namespace {

// In the order of `MacCall`.
constexpr auto kNames = std::to_array<std::string_view>({
    "Mac.CreateEvent",
    "Mac.SetEventParameter",
    "Mac.GetEventParameter",
    "Mac.GetMainEventQueue",
    "Mac.PostEventToQueue",
    "Mac.GetEventDispatcherTarget",
    "Mac.InstallEventHandler",
    "Mac.RemoveEventHandler",
    "Mac.RunCurrentEventLoop",
    "Mac.MPCreateTask",
    "Mac.TISCopyCurrentKeyboardInputSource",
    "Mac.TISGetInputSourceProperty",
    "Mac.CGEventCreateKeyboardEvent",
    "Mac.CGEventCreateScrollWheelEvent",
    "Mac.CGSetLocalEventsSuppressionInterval",
    "Mac.CGRegisterScreenRefreshCallback",
    "Mac.CFStringCreateWithCharacters",
    "Mac.CFStringGetCString",
    "Mac.CFDataCreate",
    "Mac.CFURLCreateFromFSRef",
    "Mac.CFURLCreateFromFileSystemRepresentation",
    "Mac.CFURLCopyFileSystemPath",
    "Mac.CFURLGetFileSystemRepresentation",
    "Mac.CFURLCreateBookmarkData",
    "Mac.CFURLCreateByResolvingBookmarkData",
    "Mac.CFURLCreateResourcePropertyForKeyFromBookmarkData",
    "Mac.FSFindFolder",
    "Mac.FSRefMakePath",
    "Mac.FSResolveAlias",
    "Mac.FSCopyAliasInfo",
    "Mac.PtrToHand",
    "Mac.mainWindow",
    "Mac.contentView",
    "Mac.screen",
});
static_assert(kNames.size() == static_cast<std::size_t>(MacCall::kScreen) + 1);

}  // namespace

std::optional<std::int32_t> failureOf(MacCall call) {
  return theFaults().strike(kNames[static_cast<std::size_t>(call)]);
}

std::vector<std::string_view> macProcedures() { return {kNames.begin(), kNames.end()}; }

}  // namespace simulator
