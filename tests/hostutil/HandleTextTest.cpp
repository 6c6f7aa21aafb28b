// Tests of the wrappers for handles and their contents.
#include <cstdint>
#include <cstring>
#include <string>

#include "hostutil/CallbackWrappers.h"
#include "tests/hostutil/Buffers.h"
#include "tests/hostutil/CallbackHost.h"

namespace {

using hostutil_test::PString;

class HandleText : public hostutil_test::CallbackTest {
 protected:
  Handle holding(const std::string& text) { return HostCString2Handle(&handles, text.c_str()); }

  std::string text(Handle handle) {
    const auto size = static_cast<std::size_t>(HostGetHandleSize(&handles, handle));
    return std::string(*handle, size);
  }

  void dispose(Handle handle) { HostDisposeHandle(&handles, handle); }

  const HandleProcs newer = simulator::handleProcs(2);
};

TEST_F(HandleText, MakesLocksResizesAndDisposesOfAHandle) {
  const Handle handle = HostNewHandle(&handles, 4);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(HostGetHandleSize(&handles, handle), 4);
  EXPECT_EQ(HostLockHandle(&handles, handle, true), *handle);
  HostUnlockHandle(&handles, handle);
  EXPECT_EQ(HostSetHandleSize(&handles, handle, 8), 0);
  EXPECT_EQ(HostGetHandleSize(&handles, handle), 8);
  dispose(handle);
}

TEST_F(HandleText, MakesNoHandleAndTouchesNothingWithoutTheRecord) {
  EXPECT_EQ(HostNewHandle(&newer, 4), nullptr);
  EXPECT_EQ(HostNewHandle(nullptr, 4), nullptr);
  const Handle handle = HostNewHandle(&handles, 4);
  EXPECT_EQ(HostGetHandleSize(&newer, handle), 0);
  EXPECT_EQ(HostSetHandleSize(&newer, handle, 8), errPlugInHostInsufficient);
  EXPECT_EQ(HostLockHandle(&newer, handle, false), nullptr);
  HostUnlockHandle(&newer, handle);
  HostDisposeHandle(&newer, handle);
  EXPECT_EQ(HostGetHandleSize(&handles, handle), 4);
  dispose(handle);
}

TEST_F(HandleText, DoesNotCallMissingLockProcedures) {
  HandleProcs cut = handles;
  cut.lockProc = nullptr;
  cut.unlockProc = nullptr;
  const Handle handle = HostNewHandle(&cut, 4);
  EXPECT_EQ(HostLockHandle(&cut, handle, false), nullptr);
  HostUnlockHandle(&cut, handle);
  EXPECT_EQ(HostHandleCopy(&cut, handle), nullptr);
  EXPECT_EQ(HostCString2Handle(&cut, "abc"), nullptr);
  char room[4] = "xxx";
  EXPECT_EQ(HostHandle2CString(&cut, handle, room, 4), memFullErr);
  EXPECT_STREQ(room, "");
  dispose(handle);
}

TEST_F(HandleText, CopiesBytesIntoANewHandle) {
  const Handle copy = HostCopy(&handles, "a\0b", 3);
  EXPECT_EQ(text(copy), std::string("a\0b", 3));
  dispose(copy);
  const Handle empty = HostCopy(&handles, nullptr, 0);
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(HostGetHandleSize(&handles, empty), 0);
  dispose(empty);
  EXPECT_EQ(HostCopy(&handles, "abc", -1), nullptr);
}

TEST_F(HandleText, ReturnsNullIfACopyCannotBeMade) {
  fail("Handle.newProc", -1);
  EXPECT_EQ(HostCopy(&handles, "abc", 3), nullptr);
}

TEST_F(HandleText, DisposesOfACopyThatCannotBeLocked) {
  fail("Handle.lockProc", -1);
  EXPECT_EQ(HostCopy(&handles, "abc", 3), nullptr);
}

TEST_F(HandleText, CopiesAHandleAndLeavesItUnlocked) {
  const Handle source = holding("abc");
  const Handle copy = HostHandleCopy(&handles, source);
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy, source);
  EXPECT_EQ(text(copy), "abc");
  EXPECT_EQ(HostSetHandleSize(&handles, source, 100), 0);
  EXPECT_EQ(HostHandleCopy(&handles, nullptr), nullptr);
  EXPECT_EQ(HostHandleCopy(&newer, source), nullptr);
  dispose(source);
  dispose(copy);
}

TEST_F(HandleText, AppendsAHandleToAnotherAndToItself) {
  const Handle destination = holding("abc");
  const Handle source = holding("de");
  EXPECT_EQ(HostHandleCat(&handles, destination, source), 0);
  EXPECT_EQ(text(destination), "abcde");
  EXPECT_EQ(HostHandleCat(&handles, destination, destination), 0);
  EXPECT_EQ(text(destination), "abcdeabcde");
  dispose(destination);
  dispose(source);
}

TEST_F(HandleText, LeavesADestinationThatCannotGrow) {
  const Handle destination = holding("abc");
  const Handle source = holding("de");
  fail("Handle.setSizeProc", -108);
  EXPECT_EQ(HostHandleCat(&handles, destination, source), -108);
  EXPECT_EQ(text(destination), "abc");
  dispose(destination);
  dispose(source);
}

TEST_F(HandleText, RestoresTheDestinationsSizeIfABlockCannotBeLocked) {
  const Handle destination = holding("abc");
  const Handle source = holding("de");
  fail("Handle.lockProc", -1);
  EXPECT_EQ(HostHandleCat(&handles, destination, source), memFullErr);
  EXPECT_EQ(text(destination), "abc");
  dispose(destination);
  dispose(source);
}

TEST_F(HandleText, NeedsBothHandlesAndTheRecordToAppend) {
  const Handle handle = holding("abc");
  EXPECT_EQ(HostHandleCat(&handles, handle, nullptr), paramErr);
  EXPECT_EQ(HostHandleCat(&handles, nullptr, handle), paramErr);
  EXPECT_EQ(HostHandleCat(&newer, handle, handle), errPlugInHostInsufficient);
  dispose(handle);
}

TEST_F(HandleText, ReturnsTextUpToItsZeroByteItsEndOrTheRoom) {
  const Handle handle = HostCopy(&handles, "abc\0def", 7);
  char room[16];
  EXPECT_EQ(HostHandle2CString(&handles, handle, room, sizeof room), 0);
  EXPECT_STREQ(room, "abc");
  EXPECT_EQ(HostHandle2CString(&handles, handle, room, 3), 0);
  EXPECT_STREQ(room, "ab");
  EXPECT_EQ(HostHandle2CString(&handles, handle, room, 1), 0);
  EXPECT_STREQ(room, "");
  HostSetHandleSize(&handles, handle, 2);
  EXPECT_EQ(HostHandle2CString(&handles, handle, room, sizeof room), 0);
  EXPECT_STREQ(room, "ab");
  dispose(handle);
}

TEST_F(HandleText, ReturnsALengthPrefixedStringOfAtMost254Characters) {
  const Handle handle = holding(std::string(300, 'a'));
  PString string("before");
  EXPECT_EQ(HostHandle2PString(&handles, handle, string), 0);
  EXPECT_EQ(string.terminated(), std::string(254, 'a'));
  dispose(handle);
}

TEST_F(HandleText, ReturnsAnErrorAndEmptyTextForANullHandle) {
  char room[4] = "xxx";
  PString string("before");
  EXPECT_EQ(HostHandle2CString(&handles, nullptr, room, sizeof room), paramErr);
  EXPECT_STREQ(room, "");
  EXPECT_EQ(HostHandle2PString(&handles, nullptr, string), paramErr);
  EXPECT_EQ(string.terminated(), "");
  EXPECT_EQ(HostHandle2PString(&newer, nullptr, string), errPlugInHostInsufficient);
}

TEST_F(HandleText, StoresTextsOfBothFormsWithoutTerminatorAndLength) {
  const Handle fromZeroTerminated = HostCString2Handle(&handles, "abc");
  const Handle fromLengthPrefixed = HostPString2Handle(&handles, PString("abc"));
  EXPECT_EQ(text(fromZeroTerminated), "abc");
  EXPECT_EQ(text(fromLengthPrefixed), "abc");
  dispose(fromZeroTerminated);
  dispose(fromLengthPrefixed);
  EXPECT_EQ(HostCString2Handle(&newer, "abc"), nullptr);
  EXPECT_EQ(HostPString2Handle(&newer, PString("abc")), nullptr);
}

TEST_F(HandleText, ReadsThreeVersionNumbersAndJoinsThemByPoints) {
  const std::int32_t numbers[3] = {7, 0, -1};
  const Handle handle = HostCopy(&handles, numbers, sizeof numbers);
  HostVersionNumbers version = {};
  EXPECT_EQ(HostHandle2Version(&handles, handle, &version), 0);
  EXPECT_EQ(version.major, 7);
  EXPECT_EQ(version.minor, 0);
  EXPECT_EQ(version.fix, -1);
  PString string("before");
  EXPECT_EQ(HostHandle2VersionString(&handles, handle, string), 0);
  EXPECT_EQ(string.text(), "7.0.-1");
  EXPECT_EQ(string.terminated(), "7.0.-1");
  dispose(handle);
}

TEST_F(HandleText, HasRoomForTheLongestVersionNumbers) {
  const std::int32_t numbers[3] = {INT32_MIN, INT32_MIN, INT32_MIN};
  const Handle handle = HostCopy(&handles, numbers, sizeof numbers);
  PString string;
  EXPECT_EQ(HostHandle2VersionString(&handles, handle, string), 0);
  EXPECT_EQ(string.text(), "-2147483648.-2147483648.-2147483648");
  dispose(handle);
}

TEST_F(HandleText, ReturnsAnErrorAndEmptyTextForAHandleTooShortForThreeNumbers) {
  const Handle handle = HostNewHandle(&handles, 11);
  HostVersionNumbers version = {1, 2, 3};
  EXPECT_EQ(HostHandle2Version(&handles, handle, &version), paramErr);
  EXPECT_EQ(version.major, 1);
  PString string("before");
  EXPECT_EQ(HostHandle2VersionString(&handles, handle, string), paramErr);
  EXPECT_EQ(string.terminated(), "");
  dispose(handle);
}

TEST_F(HandleText, DoesNotCallANullLockProcedureWhateverIsAskedOfTheHandle) {
  const Handle handle = HostNewHandle(&handles, 12);
  HandleProcs cut = handles;
  cut.lockProc = nullptr;
  HostVersionNumbers version = {1, 2, 3};
  EXPECT_EQ(HostHandleCat(&cut, handle, handle), memFullErr);
  EXPECT_EQ(HostGetHandleSize(&handles, handle), 12) << "as it was";
  EXPECT_EQ(HostHandle2Version(&cut, handle, &version), memFullErr);
  EXPECT_EQ(version.major, 1);
  PString string("before");
  EXPECT_EQ(HostHandle2PString(&cut, handle, string), memFullErr);
  EXPECT_EQ(string.terminated(), "");
  EXPECT_EQ(HostPString2Handle(&cut, PString("abc")), nullptr);
  dispose(handle);
}

TEST_F(HandleText, LocksWithoutAProcedureToUnlock) {
  const Handle handle = holding("abc");
  HandleProcs cut = handles;
  cut.unlockProc = nullptr;
  char room[4] = "xxx";
  EXPECT_EQ(HostHandle2CString(&cut, handle, room, sizeof room), 0);
  EXPECT_STREQ(room, "abc");
  HostUnlockHandle(&handles, handle);
  dispose(handle);
}

TEST_F(HandleText, RefusesAHandleOfNegativeSizeWithoutLockingOrResizingIt) {
  const Handle handle = holding("abc");
  const Handle other = holding("de");
  static Handle hostile;
  hostile = handle;
  static int32 (*getSize)(Handle);
  getSize = handles.getSizeProc;
  HandleProcs procs = handles;
  procs.lockProc = [](Handle, Boolean) {
    ADD_FAILURE() << "locked";
    return Ptr{};
  };
  procs.newProc = [](int32 size) {
    ADD_FAILURE() << "made with " << size << " bytes";
    return Handle{};
  };
  procs.setSizeProc = [](Handle, int32 size) {
    ADD_FAILURE() << "resized to " << size << " bytes";
    return OSErr{-1};
  };
  static int32 reported;
  procs.getSizeProc = [](Handle asked) { return asked == hostile ? reported : getSize(asked); };
  for (const int32 size : {-1, INT32_MIN}) {
    reported = size;
    EXPECT_EQ(HostHandleCopy(&procs, handle), nullptr);
    EXPECT_EQ(HostHandleCat(&procs, handle, other), paramErr);
    EXPECT_EQ(HostHandleCat(&procs, other, handle), paramErr);
    char room[4] = "xxx";
    EXPECT_EQ(HostHandle2CString(&procs, handle, room, sizeof room), paramErr);
    EXPECT_STREQ(room, "");
    PString string("before");
    EXPECT_EQ(HostHandle2PString(&procs, handle, string), paramErr);
    EXPECT_EQ(string.terminated(), "");
    HostVersionNumbers version = {1, 2, 3};
    EXPECT_EQ(HostHandle2Version(&procs, handle, &version), paramErr);
    EXPECT_EQ(version.major, 1);
  }
  dispose(handle);
  dispose(other);
}

TEST_F(HandleText, RefusesToAppendBeyond31BitsWithoutResizing) {
  const Handle handle = holding("abc");
  HandleProcs procs = handles;
  procs.getSizeProc = [](Handle) { return INT32_MAX; };
  procs.setSizeProc = [](Handle, int32 size) {
    ADD_FAILURE() << "resized to " << size << " bytes";
    return OSErr{0};
  };
  EXPECT_EQ(HostHandleCat(&procs, handle, handle), memFullErr);
  dispose(handle);
}

TEST_F(HandleText, LeaksNothingAndLeavesNoLockWhicheverCallFails) {
  const char* const procedures[] = {"Handle.newProc", "Handle.getSizeProc", "Handle.setSizeProc",
                                    "Handle.lockProc"};
  for (const char* procedure : procedures) {
    for (std::uint64_t after = 0; after < 8; ++after) {
      const Handle handle = HostNewHandle(&handles, 12);
      simulator::theFaults().add({procedure, -108, after, 1});
      const Handle copy = HostHandleCopy(&handles, handle);
      HostHandleCat(&handles, handle, handle);
      PString string;
      HostHandle2VersionString(&handles, handle, string);
      simulator::theFaults().clear();
      if (copy != nullptr) dispose(copy);
      EXPECT_EQ(HostSetHandleSize(&handles, handle, 1), 0) << procedure << " after " << after;
      dispose(handle);
    }
  }
  EXPECT_EQ(host.objectsOwned(), 0u);
}

}  // namespace
