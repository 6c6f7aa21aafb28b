#include <gtest/gtest.h>

#include "simulator/macos/MacRoman.h"

namespace simulator {
namespace {

TEST(MacRoman, HasAByteForEachCharacterOfItsTable) {
  EXPECT_EQ(macRomanFrom(u""), "");
  EXPECT_EQ(macRomanFrom(u"a~\x7F"), "a~\x7F");
  EXPECT_EQ(macRomanFrom(u"\u00C4\u00E9\u20AC\uF8FF\u02C7"), "\x80\x8E\xDB\xF0\xFF");
  EXPECT_EQ(macRomanFrom(std::u16string_view(u"a\0b", 3)), std::string("a\0b", 3));
}

TEST(MacRoman, HasTheOmegaOfTheOhmSign) { EXPECT_EQ(macRomanFrom(u"\u03A9\u2126"), "\xBD\xBD"); }

TEST(MacRoman, ComposesALetterAndTheAccentAfterIt) {
  EXPECT_EQ(macRomanFrom(u"e\u0301"), "\x8E");
  EXPECT_EQ(macRomanFrom(u"Ze\u0301ro"), "Z\x8Ero");
  EXPECT_EQ(macRomanFrom(u"A\u030Ac\u0327"), "\x81\x8D");
}

TEST(MacRoman, RefusesAnAccentThatItCannotCompose) {
  for (const char16_t* text : {u"\u0301", u"\u0301e", u"z\u0301", u"e\u0301\u0301", u"=\u0338"}) {
    EXPECT_EQ(macRomanFrom(text), std::nullopt);
  }
}

TEST(MacRoman, RefusesCharactersThatItDoesNotHave) {
  for (const char16_t* text : {u"\x80", u"\u00A4", u"\u0394", u"\u4E2D", u"\uFFFD"}) {
    EXPECT_EQ(macRomanFrom(text), std::nullopt);
  }
  EXPECT_EQ(macRomanFrom(u"\U0001F58C"), std::nullopt);
  EXPECT_EQ(macRomanFrom(std::u16string(1, 0xD800)), std::nullopt);
}

TEST(MacRoman, RefusesCharactersThatAreNotVisible) {
  for (const char16_t* text : {u"a\u00AD", u"a\u200Bb", u"\u2060", u"\uFE0F", u"\uFEFF"}) {
    EXPECT_EQ(macRomanFrom(text), std::nullopt);
  }
}

}  // namespace
}  // namespace simulator
