#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "hostutil/HostUtilities.h"
#include "simulator/macos/Kernel.h"
#include "tests/support/Machine.h"

namespace {

using simulator::processIsNative;

TEST(IsRunningNatively, ReturnsWhatTheKernelReports) {
  processIsNative() = 1;
  EXPECT_TRUE(IsRunningNatively());
  processIsNative() = -1;
  EXPECT_TRUE(IsRunningNatively());
  processIsNative() = 0;
  EXPECT_FALSE(IsRunningNatively());
}

TEST(IsRunningNatively, IsTrueIfTheKernelDoesNotKnowTheSetting) {
  processIsNative() = std::nullopt;
  EXPECT_TRUE(IsRunningNatively());
}

TEST(HostPlayDialog, IsTrueOnlyForPlayInfoOne) {
  for (const int info : {-1, 0, 1, 2, 3, 0x0100}) {
    PIDescriptorParameters parameters = {};
    parameters.descriptorParametersVersion = 1;
    parameters.recordInfo = 1;
    parameters.playInfo = static_cast<decltype(parameters.playInfo)>(info);
    EXPECT_EQ(HostPlayDialog(&parameters), info == 1) << info;
  }
}

/// The beginning of a globals block.
struct Globals {
  short* result;
  void* parameterBlock;
  char own[48];
};

/// Handle procedures for one block, which record their calls.
class AllocateGlobalsCall : public testing::Test {
 protected:
  AllocateGlobalsCall() {
    calls.clear();
    block = {};
    newSucceeds = lockSucceeds = true;
    stampedBeforeInitialiser = false;
  }

  static Handle newHandle(std::int32_t size) {
    calls.push_back("new " + std::to_string(size));
    return newSucceeds ? &master : nullptr;
  }
  static Ptr lock(Handle handle, Boolean moveHigh) {
    calls.push_back(std::string("lock") + (handle == &master ? "" : " stranger") +
                    (moveHigh ? " high" : ""));
    return lockSucceeds ? reinterpret_cast<Ptr>(&block) : nullptr;
  }
  static void dispose(Handle handle) {
    calls.push_back(handle == &master ? "dispose" : "dispose stranger");
  }
  static void initialise(void* globals) {
    calls.push_back("initialise");
    stampedBeforeInitialiser = static_cast<Globals*>(globals)->result != nullptr;
    static_cast<Globals*>(globals)->own[0] = 'x';
  }

  void* allocate() {
    return AllocateGlobals(&result, &parameters, &procs, sizeof(Globals), &handle, initialise);
  }

  void expectStamped() const {
    EXPECT_EQ(block.result, &result);
    EXPECT_EQ(block.parameterBlock, &parameters);
    EXPECT_EQ(result, 0);
  }

  static inline std::vector<std::string> calls;
  static inline Globals block;
  static inline Ptr master = reinterpret_cast<Ptr>(&block);
  static inline bool newSucceeds = true, lockSucceeds = true, stampedBeforeInitialiser = false;

  HandleProcs procs = {1,
                       8,
                       newHandle,
                       dispose,
                       [](Handle) -> std::int32_t { return sizeof(Globals); },
                       [](Handle, std::int32_t) -> OSErr { return 0; },
                       lock,
                       [](Handle) {},
                       [](std::int32_t) {},
                       [](Handle) {}};
  short result = -7;
  int parameters = 0;
  Handle handle = nullptr;
};

TEST_F(AllocateGlobalsCall, LocksStampsInitialisesAndStoresANewBlock) {
  EXPECT_EQ(allocate(), &block);
  EXPECT_EQ(calls, (std::vector<std::string>{"new 64", "lock high", "initialise"}));
  EXPECT_TRUE(stampedBeforeInitialiser);
  EXPECT_EQ(block.own[0], 'x');
  EXPECT_EQ(handle, &master);
  expectStamped();
}

TEST_F(AllocateGlobalsCall, LocksAndStampsAnExistingBlockAgain) {
  handle = &master;
  EXPECT_EQ(allocate(), &block);
  EXPECT_EQ(calls, (std::vector<std::string>{"lock high"}));
  EXPECT_EQ(block.own[0], 0);
  expectStamped();
}

TEST_F(AllocateGlobalsCall, ReturnsNullIfAnExistingBlockCannotBeLocked) {
  handle = &master;
  lockSucceeds = false;
  EXPECT_EQ(allocate(), nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"lock high"}));
  EXPECT_EQ(handle, &master);
  EXPECT_EQ(result, -7);
}

TEST_F(AllocateGlobalsCall, ReturnsNullIfANewBlockCannotBeMade) {
  newSucceeds = false;
  EXPECT_EQ(allocate(), nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"new 64"}));
  EXPECT_EQ(handle, nullptr);
}

TEST_F(AllocateGlobalsCall, DisposesOfANewBlockThatCannotBeLocked) {
  lockSucceeds = false;
  EXPECT_EQ(allocate(), nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"new 64", "lock high", "dispose"}));
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(result, -7);
}

TEST_F(AllocateGlobalsCall, ReturnsNullAndDoesNotCallUnusableProcedures) {
  std::array<HandleProcs, 6> unusable = {procs, procs, procs, procs, procs, procs};
  unusable[0].handleProcsVersion = 2;
  unusable[1].handleProcsVersion = 0;
  unusable[2].numHandleProcs = 7;
  unusable[3].newProc = nullptr;
  unusable[4].disposeProc = nullptr;
  unusable[5].setSizeProc = nullptr;
  for (HandleProcs& record : unusable) {
    for (const Handle present : {Handle{}, &master}) {
      Handle place = present;
      EXPECT_EQ(AllocateGlobals(&result, &parameters, &record, 64, &place, initialise), nullptr);
      EXPECT_EQ(place, present);
    }
  }
  EXPECT_EQ(AllocateGlobals(&result, &parameters, nullptr, 64, &handle, initialise), nullptr);
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(result, -7);
}

TEST_F(AllocateGlobalsCall, DoesNotCallANullLockProcedure) {
  procs.lockProc = nullptr;
  EXPECT_EQ(allocate(), nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"new 64", "dispose"}));
  EXPECT_EQ(handle, nullptr);
  calls.clear();
  handle = &master;
  EXPECT_EQ(allocate(), nullptr);
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(handle, &master);
  EXPECT_EQ(result, -7);
}

TEST_F(AllocateGlobalsCall, ReturnsNullForASizeBeyond31BitsWithoutAskingTheHost) {
  for (const std::size_t size : {std::size_t{0x80000000}, std::size_t{0x100000040}, SIZE_MAX}) {
    EXPECT_EQ(AllocateGlobals(&result, &parameters, &procs, size, &handle, initialise), nullptr);
  }
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(handle, nullptr);
}

/// Here the procedures become unavailable while the new block is made, so it is not disposed of.
TEST_F(AllocateGlobalsCall, ChecksTheProceduresBeforeEveryUse) {
  static HandleProcs* record = nullptr;
  record = &procs;
  procs.newProc = [](std::int32_t size) {
    record->handleProcsVersion = 2;
    return newHandle(size);
  };
  EXPECT_EQ(allocate(), nullptr);
  EXPECT_EQ(calls, (std::vector<std::string>{"new 64"}));
  EXPECT_EQ(handle, nullptr);
}

}  // namespace
