#include <Carbon/Carbon.h>
#include <gmock/gmock.h>

#include <string>
#include <thread>

#include "simulator/macos/TextInput.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

class TextInput : public testing::Test {
 protected:
  static std::string identifierOf(TISInputSourceRef source) {
    const auto* identifier =
        static_cast<CFStringRef>(TISGetInputSourceProperty(source, kTISPropertyInputSourceID));
    char text[256] = "";
    EXPECT_TRUE(CFStringGetCString(identifier, text, sizeof text, kCFStringEncodingUTF8));
    return text;
  }

  Machine machine;
};

TEST_F(TextInput, NamesTheCurrentLayout) {
  keyboardLayout() = "com.apple.keylayout.German";
  const TISInputSourceRef source = TISCopyCurrentKeyboardInputSource();
  EXPECT_EQ(identifierOf(source), "com.apple.keylayout.German");
  CFRelease(source);
}

/// A source that was copied earlier stays as it was.
TEST_F(TextInput, CopiesTheSourceOfTheMoment) {
  const TISInputSourceRef before = TISCopyCurrentKeyboardInputSource();
  keyboardLayout() = "com.apple.keylayout.French";
  const TISInputSourceRef after = TISCopyCurrentKeyboardInputSource();
  EXPECT_EQ(identifierOf(before), "com.apple.keylayout.US");
  EXPECT_EQ(identifierOf(after), "com.apple.keylayout.French");
  CFRelease(before);
  CFRelease(after);
}

TEST_F(TextInput, GivesTheSourceToTheCallerAndKeepsItsProperties) {
  const TISInputSourceRef source = TISCopyCurrentKeyboardInputSource();
  identifierOf(source);
  CFRelease(source);
  EXPECT_EQ(theCFObjects().live(), 0U);
}

TEST_F(TextInput, HasNoPropertyOfAnotherKey) {
  const TISInputSourceRef source = TISCopyCurrentKeyboardInputSource();
  EXPECT_EQ(TISGetInputSourceProperty(source, CFSTR("another")), nullptr);
  CFRelease(source);
}

TEST_F(TextInput, IsMisusedThroughAReleasedSource) {
  machine.expectMisuse(testing::StartsWith("TISGetInputSourceProperty: "));
  const TISInputSourceRef source = TISCopyCurrentKeyboardInputSource();
  CFRelease(source);
  EXPECT_EQ(TISGetInputSourceProperty(source, kTISPropertyInputSourceID), nullptr);
}

TEST_F(TextInput, IsCopiedOnTheMainThreadAlone) {
  machine.expectMisuse(
      "TISCopyCurrentKeyboardInputSource: called on another thread than the main one");
  std::thread([] { CFRelease(TISCopyCurrentKeyboardInputSource()); }).join();
}

TEST_F(TextInput, IsReadOnTheMainThreadAlone) {
  machine.expectMisuse("TISGetInputSourceProperty: called on another thread than the main one");
  const TISInputSourceRef source = TISCopyCurrentKeyboardInputSource();
  std::thread([&] { identifierOf(source); }).join();
  CFRelease(source);
}

TEST_F(TextInput, AnswersTheKeyModifiersOnEveryThread) {
  setKeyModifiers(0x0900);
  EXPECT_EQ(GetCurrentKeyModifiers(), 0x0900U);
  UInt32 onAnotherThread = 0;
  std::thread([&] { onAnotherThread = GetCurrentKeyModifiers(); }).join();
  EXPECT_EQ(onAnotherThread, 0x0900U);
}

}  // namespace
