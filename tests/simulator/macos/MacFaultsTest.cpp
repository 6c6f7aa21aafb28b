// Each call of the platform that can be made to fail, made to fail.
#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>
#include <gtest/gtest.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <functional>
#include <map>
#include <set>
#include <string>

#include "platform/foundation/FoundationCalls.h"
#include "simulator/macos/MacFaults.h"
#include "simulator/macos/RunLoops.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

constexpr OSStatus kError = -4960;

class MacFaults : public testing::Test {
 protected:
  /// For each call: whether it reports a failure, having had proper arguments.
  std::map<std::string, std::function<bool()>> calls() {
    return {
        {"Mac.CreateEvent", [] { return CreateEvent(nullptr, 1, 1, 0, 0, nullptr) == kError; }},
        {"Mac.SetEventParameter",
         [this] { return SetEventParameter(event_, 1, typeSInt16, 2, &short_) == kError; }},
        {"Mac.GetEventParameter",
         [this] {
           return GetEventParameter(event_, kEventParamKeyCode, typeSInt16, nullptr, 2, nullptr,
                                    &short_) == kError;
         }},
        {"Mac.GetMainEventQueue", [] { return GetMainEventQueue() == nullptr; }},
        {"Mac.PostEventToQueue",
         [this] {
           return PostEventToQueue(theEventManager().mainQueue(), event_, kEventPriorityHigh) ==
                  kError;
         }},
        {"Mac.GetEventDispatcherTarget", [] { return GetEventDispatcherTarget() == nullptr; }},
        {"Mac.InstallEventHandler",
         [] {
           const EventTypeSpec type = {1, 1};
           const auto handler = [](EventHandlerCallRef, EventRef, void*) { return OSStatus{0}; };
           return InstallEventHandler(theEventManager().dispatcher(), handler, 1, &type, nullptr,
                                      nullptr) == kError;
         }},
        {"Mac.RemoveEventHandler", [] { return RemoveEventHandler(nullptr) == kError; }},
        {"Mac.RunCurrentEventLoop", [] { return RunCurrentEventLoop(0) == kError; }},
        {"Mac.MPCreateTask",
         [] {
           MPTaskID task = nullptr;
           const auto entry = [](void*) { return OSStatus{0}; };
           return MPCreateTask(entry, nullptr, 512000, nullptr, nullptr, nullptr, 0, &task) ==
                  kError;
         }},
        {"Mac.TISCopyCurrentKeyboardInputSource",
         [] { return TISCopyCurrentKeyboardInputSource() == nullptr; }},
        {"Mac.TISGetInputSourceProperty",
         [this] {
           return TISGetInputSourceProperty(source_, kTISPropertyInputSourceID) == nullptr;
         }},
        {"Mac.CGEventCreateKeyboardEvent",
         [] { return CGEventCreateKeyboardEvent(nullptr, 1, true) == nullptr; }},
        {"Mac.CGEventCreateScrollWheelEvent",
         [] { return CGEventCreateScrollWheelEvent(nullptr, 0, 1, 1) == nullptr; }},
        {"Mac.CGSetLocalEventsSuppressionInterval",
         [] { return CGSetLocalEventsSuppressionInterval(1) == kError; }},
        {"Mac.CGRegisterScreenRefreshCallback",
         [] {
           return CGRegisterScreenRefreshCallback([](auto, auto, auto) {}, nullptr) == kError;
         }},
        {"Mac.CFStringCreateWithCharacters",
         [] { return CFStringCreateWithCharacters(nullptr, nullptr, 0) == nullptr; }},
        {"Mac.CFStringGetCString",
         [this] {
           return !CFStringGetCString(CFSTR("a"), bytes_, sizeof bytes_, kCFStringEncodingUTF8);
         }},
        {"Mac.CFDataCreate", [] { return CFDataCreate(nullptr, nullptr, 0) == nullptr; }},
        {"Mac.CFURLCreateFromFSRef",
         [this] { return CFURLCreateFromFSRef(nullptr, &folder_) == nullptr; }},
        {"Mac.CFURLCreateFromFileSystemRepresentation",
         [] {
           return CFURLCreateFromFileSystemRepresentation(
                      nullptr, reinterpret_cast<const UInt8*>("/"), 1, true) == nullptr;
         }},
        {"Mac.CFURLCopyFileSystemPath",
         [this] { return CFURLCopyFileSystemPath(url_, kCFURLPOSIXPathStyle) == nullptr; }},
        {"Mac.CFURLGetFileSystemRepresentation",
         [this] {
           return !CFURLGetFileSystemRepresentation(url_, true, reinterpret_cast<UInt8*>(bytes_),
                                                    sizeof bytes_);
         }},
        {"Mac.CFURLCreateBookmarkData",
         [this] {
           return CFURLCreateBookmarkData(nullptr, url_, 0, nullptr, nullptr, nullptr) == nullptr;
         }},
        {"Mac.CFURLCreateByResolvingBookmarkData",
         [this] {
           return CFURLCreateByResolvingBookmarkData(nullptr, bookmark_, 0, nullptr, nullptr,
                                                     nullptr, nullptr) == nullptr;
         }},
        {"Mac.CFURLCreateResourcePropertyForKeyFromBookmarkData",
         [this] {
           return CFURLCreateResourcePropertyForKeyFromBookmarkData(nullptr, kCFURLPathKey,
                                                                    bookmark_) == nullptr;
         }},
        {"Mac.FSFindFolder",
         [this] {
           return FSFindFolder(kUserDomain, kPreferencesFolderType, true, &folder_) ==
                  OSErr{kError};
         }},
        {"Mac.FSRefMakePath",
         [this] {
           return FSRefMakePath(&folder_, reinterpret_cast<UInt8*>(bytes_), sizeof bytes_) ==
                  kError;
         }},
        {"Mac.FSResolveAlias",
         [] { return FSResolveAlias(nullptr, nullptr, nullptr, nullptr) == OSErr{kError}; }},
        {"Mac.FSCopyAliasInfo",
         [] {
           return FSCopyAliasInfo(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr) == kError;
         }},
        {"Mac.PtrToHand", [this] { return PtrToHand(bytes_, nullptr, 1) == OSErr{kError}; }},
        {"Mac.mainWindow", [] { return isNull("mainWindow", application()); }},
        {"Mac.contentView", [] { return isNull("contentView", theWindowServer().windowObject()); }},
        {"Mac.screen", [] { return isNull("screen", theWindowServer().windowObject()); }},
    };
  }

  ~MacFaults() override {
    ReleaseEvent(event_);
    CFRelease(source_);
    CFRelease(url_);
    CFRelease(bookmark_);
  }

  static bool isNull(const char* selector, id receiver) {
    return reinterpret_cast<id (*)(id, SEL)>(&objc_msgSend)(receiver, sel_registerName(selector)) ==
           nullptr;
  }

  static id application() {
    return reinterpret_cast<id (*)(id, SEL)>(&objc_msgSend)(
        reinterpret_cast<id>(objc_getClass("NSApplication")),
        sel_registerName("sharedApplication"));
  }

  testing_support::Machine machine_;
  char bytes_[1024] = "";
  std::int16_t short_ = 0;
  EventRef event_ = theEventManager().create(kEventClassKeyboard, 1, 0);
  TISInputSourceRef source_ = TISCopyCurrentKeyboardInputSource();
  CFURLRef url_ = CFURLCreateFromFileSystemRepresentation(
      nullptr, reinterpret_cast<const UInt8*>("/"), 1, true);
  CFDataRef bookmark_ = CFURLCreateBookmarkData(nullptr, url_, 0, nullptr, nullptr, nullptr);
  FSRef folder_ = refOfPath("/");
};

TEST_F(MacFaults, MakeEachCallFailOnceAndDoNothing) {
  const std::size_t live = theEventManager().live() + theCFObjects().live();
  const auto callsByName = calls();
  std::set<std::string_view> names;
  for (const auto& [name, fails] : callsByName) {
    names.insert(name);
    machine_.drain();
    theFaults().add({name, kError, 0, 1});
    EXPECT_TRUE(fails()) << name;
    EXPECT_EQ(theFaults().fired(), 1U) << name;
    theFaults().clear();
    EXPECT_TRUE(machine_.drain().empty()) << name;
  }
  EXPECT_EQ(theEventManager().live() + theCFObjects().live(), live);
  EXPECT_EQ(theEventManager().installed(), 0U);
  EXPECT_EQ(theEventManager().queued(), 0U);
  EXPECT_EQ(theThreads().started(), 0);
  const auto all = macProcedures();
  EXPECT_EQ(names, std::set<std::string_view>(all.begin(), all.end()));
}

TEST_F(MacFaults, LeaveTheHostsOwnReadingAlone) {
  const std::uint32_t code = 7;
  EXPECT_EQ(SetEventParameter(event_, kEventParamKeyCode, typeUInt32, sizeof code, &code), noErr);
  theFaults().add({"Mac.*", kError, 0, 9});
  std::uint32_t read = 0;
  EXPECT_EQ(theEventManager().getParameter(event_, kEventParamKeyCode, typeUInt32, nullptr,
                                           std::as_writable_bytes(std::span(&read, 1)), nullptr),
            noErr);
  EXPECT_EQ(read, 7U);
  EXPECT_EQ(theFaults().fired(), 0U);
  theFaults().clear();
}

}  // namespace
