#include <Carbon/Carbon.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <exception>
#include <typeinfo>

#include "simulator/loader/ByteReader.h"
#include "simulator/loader/CLibrary.h"
#include "simulator/loader/SystemLibraries.h"

namespace simulator {
namespace {

constexpr const char* kLibSystem = "/usr/lib/libSystem.B.dylib";
constexpr const char* kLibCxx = "/usr/lib/libc++.1.dylib";
constexpr const char* kCarbon = "/System/Library/Frameworks/Carbon.framework/Versions/A/Carbon";
constexpr const char* kDevice =
    "/Library/Frameworks/MoravinClient.framework/Versions/A/MoravinClient";

TEST(SystemLibraries, IncludeThoseOfTheMacOnly) {
  const SimulatedMac mac;
  EXPECT_TRUE(mac.has(kLibSystem));
  EXPECT_TRUE(mac.has(kLibCxx));
  EXPECT_TRUE(mac.has(kCarbon));
  EXPECT_FALSE(mac.has("/usr/lib/libz.1.dylib"));
}

TEST(SystemLibraries, IncludeTheDeviceFrameworkWhileItIsLoaded) {
  EXPECT_FALSE(SimulatedMac().has(kDevice));
  void* const library = dlopen(MRV_DEVICE_FRAMEWORK, RTLD_NOW);
  ASSERT_NE(library, nullptr) << dlerror();
  EXPECT_TRUE(SimulatedMac().has(kDevice));
  EXPECT_EQ(SimulatedMac().find(kDevice, "_RegisterMoravinClient"),
            dlsym(library, "RegisterMoravinClient"));
  EXPECT_EQ(SimulatedMac().find(kDevice, "_fopen"), nullptr);
}

TEST(SystemLibraries, ProvideTheSimulatorsFrameworkFunctions) {
  EXPECT_EQ(SimulatedMac().find(kCarbon, "_CreateEvent"), reinterpret_cast<void*>(&CreateEvent));
}

TEST(SystemLibraries, ProvideStandardStreamsAsVariables) {
  EXPECT_EQ(SimulatedMac().find(kLibSystem, "___stdoutp"), &stdout);
}

TEST(SystemLibraries, HideCLibraryFunctionsThatAreNotListed) {
  const SimulatedMac mac;
  EXPECT_NE(mac.find(kLibSystem, "_fopen"), nullptr);
  EXPECT_EQ(mac.find(kLibSystem, "_system"), nullptr);
  EXPECT_EQ(mac.find(kLibCxx, "_fopen"), nullptr);
}

TEST(SystemLibraries, ShareTheProcessesCxxAbi) {
  const SimulatedMac mac;
  EXPECT_EQ(mac.find(kLibCxx, "___cxa_throw"), dlsym(RTLD_DEFAULT, "__cxa_throw"));
  EXPECT_EQ(mac.find(kLibCxx, "__ZTISt9exception"), &typeid(std::exception));
  EXPECT_EQ(mac.find(kLibCxx, "__Znwm"), dlsym(RTLD_DEFAULT, "_Znwm"));
}

TEST(SystemLibraries, ProvideWhatTheMacsCxxLibraryExports) {
  const SimulatedMac mac;
  const char* const append =
      "__ZNSt3__112basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEE6appendEPKc";
  EXPECT_NE(mac.find(kLibCxx, append), nullptr);
  EXPECT_EQ(dlsym(RTLD_DEFAULT, append + 1), nullptr);
  EXPECT_EQ(mac.find(kLibCxx, "__ZNSs6appendEPKc"), nullptr);  // of libstdc++ alone
  EXPECT_EQ(mac.find(kLibCxx, "__ZNSt3__13notEv"), nullptr);
}

TEST(SystemLibraries, RefuseCxxLibraryObjectsThatHoldTheSystemsRecords) {
  for (const char* const symbol :
       {"__ZNSt3__15mutex4lockEv", "__ZNSt3__14coutE", "__ZNSt3__16thread4joinEv",
        "__ZNSt3__16localeC1Ev", "__ZNSt3__18ios_base4initEPv", "__ZSt17current_exceptionv",
        "__ZNSt13exception_ptrD1Ev", "___cxa_increment_exception_refcount",
        "__ZNSt3__118condition_variable10notify_oneEv"}) {
    EXPECT_THROW(SimulatedMac().find(kLibCxx, symbol), LoadError) << symbol;
  }
}

TEST(SystemLibraries, HideTheCLibraryFromLookUpsInAFramework) {
  EXPECT_EQ(SimulatedMac().find(kCarbon, "_fopen"), nullptr);
  EXPECT_EQ(SimulatedMac().find(kCarbon, "fopen"), nullptr);
}

TEST(SystemLibraries, ReturnSineAndCosineTogether) {
  auto* const both = reinterpret_cast<SineAndCosine (*)(double)>(
      SimulatedMac().find(kLibSystem, "___sincos_stret"));
  ASSERT_NE(both, nullptr);
  EXPECT_EQ(both(0.5).sine, std::sin(0.5));
  EXPECT_EQ(both(0.5).cosine, std::cos(0.5));
}

TEST(SystemLibraries, FillAPatternThatEndsInTheMiddle) {
  auto* const fill = reinterpret_cast<void (*)(void*, const void*, std::size_t)>(
      SimulatedMac().find(kLibSystem, "_memset_pattern16"));
  char block[21] = {};
  fill(block, "0123456789abcdef", 20);
  EXPECT_STREQ(block, "0123456789abcdef0123");
}

}  // namespace
}  // namespace simulator
