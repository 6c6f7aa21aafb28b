#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>

#include "simulator/scenario/CrashReport.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator;

/// What the dynamic linker has about a function: its module and where that lies.
Dl_info linkerInfo(void* function) {
  Dl_info info = {};
  EXPECT_NE(dladdr(function, &info), 0);
  return info;
}

/// What a child process recorded that ran `work`, and how it ended.
struct Child {
  explicit Child(const std::function<void()>& work) {
    void* const page = mmap(nullptr, sizeof(CrashRecord), PROT_READ | PROT_WRITE,
                            MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    record = new (page) CrashRecord;
    const pid_t child = fork();
    if (child == 0) {
      recordCrashes(*record);
      work();
      _exit(0);
    }
    waitpid(child, &status, 0);
  }
  ~Child() { munmap(record, sizeof(CrashRecord)); }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  CrashRecord* record;
  int status = -1;
};

/// Ends the process in the module's function crash_report_test::abortHere().
void abortInModule() {
  void* const module = dlopen(ABORTS, RTLD_NOW);
  reinterpret_cast<void (*)()>(dlsym(module, "callAbortHere"))();
}

TEST(CrashReport, RecordsTheSignalAndTheFunctionAndLetsTheSignalEndTheProcess) {
  const Child child([] {
    watchModule(ABORTS);
    abortInModule();
  });
  ASSERT_TRUE(WIFSIGNALED(child.status));
  EXPECT_EQ(WTERMSIG(child.status), SIGABRT);
  EXPECT_EQ(child.record->signal, SIGABRT);
  EXPECT_EQ(functionAt(ABORTS, child.record->offset), "crash_report_test::abortHere()");
}

TEST(CrashReport, RecordsEverySignalOfAFault) {
  for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGTRAP, SIGSYS}) {
    const Child child([&] { raise(signal); });
    EXPECT_TRUE(WIFSIGNALED(child.status));
    EXPECT_EQ(WTERMSIG(child.status), signal);
    EXPECT_EQ(child.record->signal, signal);
  }
}

TEST(CrashReport, RecordsNoPlaceOutsideTheWatchedModule) {
  const Child child([] {
    watchModule("/no/such/module.so");
    abortInModule();
  });
  EXPECT_EQ(child.record->signal, SIGABRT);
  EXPECT_EQ(child.record->offset, 0U);
}

TEST(CrashReport, RecordsNothingOfAProcessThatEndsOtherwise) {
  const Child ended([] {});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.record->signal, 0);
  const Child killed([] { kill(getpid(), SIGKILL); });
  EXPECT_EQ(WTERMSIG(killed.status), SIGKILL);
  EXPECT_EQ(killed.record->signal, 0);
}

/// The offset of the plug-in's entry point from the module's start.
std::uint64_t offsetOfEntryPoint() {
  void* const entry = dlsym(dlopen(MODULE, RTLD_NOW), "AutoPluginMain");
  return static_cast<std::uint64_t>(static_cast<char*>(entry) -
                                    static_cast<char*>(linkerInfo(entry).dli_fbase));
}

TEST(CrashReport, NamesTheFunctionThatCoversAnOffset) {
  const std::uint64_t start = offsetOfEntryPoint();
  EXPECT_EQ(functionAt(MODULE, start), "AutoPluginMain");
  EXPECT_EQ(functionAt(MODULE, start + 1), "AutoPluginMain");
  EXPECT_NE(functionAt(MODULE, start - 1), "AutoPluginMain");
  EXPECT_EQ(functionAt(MODULE, 1), "");
}

TEST(CrashReport, NamesNoFunctionInAFileThatIsNotAWholeModule) {
  const testing_support::TemporaryFolder folder;
  const std::uint64_t offset = offsetOfEntryPoint();
  EXPECT_EQ(functionAt(folder.file("missing"), offset), "");
  const std::string whole = testing_support::readFile(MODULE);
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{63}, std::size_t{64}, whole.size() / 2}) {
    testing_support::writeFile(folder.file("part"), whole.substr(0, size));
    EXPECT_EQ(functionAt(folder.file("part"), offset), "") << size;
  }
  std::string other = whole;
  other[0] = 'x';
  testing_support::writeFile(folder.file("other"), other);
  EXPECT_EQ(functionAt(folder.file("other"), offset), "");
}

TEST(SignalName, IsTheSystemsNameAndDescription) {
  EXPECT_EQ(signalName(SIGSEGV), "SIGSEGV (Segmentation fault)");
  EXPECT_EQ(signalName(SIGKILL), "SIGKILL (Killed)");
  EXPECT_EQ(signalName(200), "signal 200");
}

}  // namespace
