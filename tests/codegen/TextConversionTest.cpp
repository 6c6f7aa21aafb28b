#include <PIGeneral.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "codegen/TextConversion.h"
#include "simulator/base/Faults.h"
#include "simulator/macos/CFObjects.h"
#include "suites/Suites.h"

namespace {

/// The contents of every string of the fake string suite, well formed or not.
std::u16string units;
ASErr error = 0;

class TextConversion : public testing::Test {
 protected:
  TextConversion() {
    suite_.LengthAsUnicodeCString = [](ASZString) { return static_cast<ASUInt32>(units.size()); };
    suite_.AsUnicodeCString = [](ASZString, ASUnicode* out, ASUInt32 size, ASBoolean) {
      EXPECT_EQ(size, units.size() + 1);
      std::copy(units.begin(), units.end(), out);
      return error;
    };
    sASZString.suite = &suite_;
  }

  ~TextConversion() override {
    sASZString.suite = nullptr;
    EXPECT_EQ(simulator::theCFObjects().live(), 0u);
  }

  static std::optional<std::string> converted(std::u16string text) {
    units = std::move(text);
    return textToUTF8(nullptr);
  }

  ASZStringSuite suite_{};
};

TEST_F(TextConversion, ReturnsUTF8) {
  EXPECT_EQ(converted(u""), "");
  EXPECT_EQ(converted(u"Caf\u00E9 \u20AC \U0001F58C"), "Caf\u00E9 \u20AC \U0001F58C");
}

TEST_F(TextConversion, HasRoomForThreeBytesPerUnit) {
  EXPECT_EQ(converted(u"\uFFFD\uFFFD\uFFFD"), "\uFFFD\uFFFD\uFFFD");
}

TEST_F(TextConversion, ReplacesUnpairedSurrogates) {
  EXPECT_EQ(converted({u'a', 0xD83D}), "a\uFFFD") << "high at the end";
  EXPECT_EQ(converted({0xDD8C, u'b'}), "\uFFFDb") << "low at the start";
  EXPECT_EQ(converted({0xD83D, 0xD83D, 0xDD8C, 0xDD8C}), "\uFFFD\U0001F58C\uFFFD");
  EXPECT_EQ(converted({0xDD8C, 0xD83D}), "\uFFFD\uFFFD") << "in the wrong order";
}

TEST_F(TextConversion, EndsAtTheFirstZeroUnit) { EXPECT_EQ(converted({u'a', 0, u'b'}), "a"); }

TEST_F(TextConversion, ReturnsNulloptForALengthBeyond31BitsWithoutReadingTheText) {
  static ASUInt32 length;
  suite_.LengthAsUnicodeCString = [](ASZString) { return length; };
  suite_.AsUnicodeCString = [](ASZString, ASUnicode*, ASUInt32 size, ASBoolean) {
    ADD_FAILURE() << "read into " << size << " units";
    return ASErr{-1};
  };
  for (const ASUInt32 reported : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
    length = reported;
    EXPECT_EQ(textToUTF8(nullptr), std::nullopt) << reported;
  }
}

TEST_F(TextConversion, ReturnsNulloptIfTheHostFails) {
  error = -1731;
  EXPECT_EQ(converted(u"text"), std::nullopt);
  error = 0;
}

TEST(UnitsToCString, TakesWholePairsOfSurrogatesAndNoHalves) {
  EXPECT_EQ(unitsToCString(u"a\u00E9\u20AC"), "a\u00E9\u20AC");
  EXPECT_EQ(unitsToCString(u"x\U0001F58Cy\U00010000\U0010FFFF"),
            "x\U0001F58Cy\U00010000\U0010FFFF");
  for (const std::u16string& text :
       {std::u16string{u'a', 0xD800}, std::u16string{0xDBFF, u'a'}, std::u16string{0xD800, 0xD800},
        std::u16string{0xDC00}, std::u16string{0xDFFF, u'a'}, std::u16string{u'a', 0, u'b'}}) {
    EXPECT_EQ(unitsToCString(text), std::nullopt) << text.size();
  }
}

TEST_F(TextConversion, ReturnsNulloptIfThePlatformRefusesTheTextOrItsBytes) {
  for (const char* const call : {"Mac.CFStringCreateWithCharacters", "Mac.CFStringGetCString"}) {
    simulator::theFaults().add({call, 0});
    EXPECT_EQ(converted(u"text"), std::nullopt) << call;
    EXPECT_EQ(simulator::theFaults().fired(), 1U) << call;
    simulator::theFaults().clear();
  }
}

}  // namespace
