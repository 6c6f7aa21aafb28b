#include <gtest/gtest.h>

#include "simulator/base/Text.h"

namespace simulator {
namespace {

TEST(Text, ConvertsBetweenUtf8AndUtf16) {
  for (const char* text : {"", "abc", "\u00E4\u07FF", "\u0800\uFFFD", "\U00010000\U0010FFFF"}) {
    EXPECT_EQ(utf8From(utf16From(text)), text);
    EXPECT_TRUE(isUtf8(text));
    EXPECT_EQ(wellFormed(text), text);
  }
}

TEST(Text, ReplacesBytesThatAreNotWellFormed) {
  EXPECT_EQ(wellFormed("a\xFFz"), "a\uFFFDz");
  EXPECT_EQ(wellFormed("a\xC3"), "a\uFFFD");              // truncated
  EXPECT_EQ(wellFormed("\xC0\x80"), "\uFFFD\uFFFD");      // overlong form
  EXPECT_EQ(wellFormed("\xE0\x80\x80").size(), 9u);       // overlong form
  EXPECT_EQ(wellFormed("\xED\xA0\x80").size(), 9u);       // a surrogate
  EXPECT_EQ(wellFormed("\xF4\x90\x80\x80").size(), 12u);  // beyond U+10FFFF
  EXPECT_EQ(wellFormed("\xF5").size(), 3u);
  EXPECT_FALSE(isUtf8("\x80"));
}

TEST(Text, ReplacesLoneSurrogates) {
  const char16_t units[] = {0xD800, u'a', 0xDC00, 0};
  EXPECT_EQ(utf8From(units), "\uFFFDa\uFFFD");
}

}  // namespace
}  // namespace simulator
