// UTF-16 and Mac Roman as UTF-8.
#include <gtest/gtest.h>

#include <string>

#include "actionfiles/TextDecoding.h"
#include "tests/actionfiles/ActionFileWriter.h"

using namespace actionfiles;
using testing_support::textOf;

namespace {

Text decoded(std::string_view bytes) {
  Text text;
  text.utf8 = "what was there before";
  text.units = std::make_shared<std::u16string>(u"what was there before");
  decodeUtf16(bytes, text);
  return text;
}

}  // namespace

TEST(TextDecoding, DropsOneTerminator) {
  EXPECT_EQ(decoded({"\0a\0b\0\0", 6}).utf8, "ab");
  EXPECT_TRUE(decoded({"\0a\0b\0\0", 6}).terminated);
  EXPECT_EQ(decoded({"\0a\0b", 4}).utf8, "ab");
  EXPECT_FALSE(decoded({"\0a\0b", 4}).terminated);
  EXPECT_EQ(decoded({"\0a\0\0\0\0", 6}).utf8, std::string("a\0", 2));
  EXPECT_EQ(decoded("").utf8, "");
}

TEST(TextDecoding, EncodesCharactersOfEveryLength) {
  EXPECT_EQ(textOf(u"a\u007F\u0080\u07FF\u0800\uFFFF").utf8, "a\u007F\u0080\u07FF\u0800\uFFFF");
  EXPECT_EQ(textOf(u"\U00010000 \U0010FFFF").utf8, "\U00010000 \U0010FFFF");
  EXPECT_EQ(textOf(u"\U0001F3A8").units, nullptr) << "UTF-8 says everything";
}

TEST(TextDecoding, KeepsTheUnitsIfASurrogateHasNoPartner) {
  const std::u16string_view broken[] = {{u"\xD800", 1},
                                        {u"\xDC00", 1},
                                        {u"\xDC00\xD800", 2},
                                        {u"\xD800\xD800\xDC00", 3},
                                        {u"\xDC00\xDC00", 2}};
  const char* const utf8[] = {"\uFFFD", "\uFFFD", "\uFFFD\uFFFD", "\uFFFD\U00010000",
                              "\uFFFD\uFFFD"};
  for (std::size_t i = 0; i < std::size(broken); ++i) {
    EXPECT_EQ(textOf(broken[i]).utf8, utf8[i]) << i;
    ASSERT_NE(textOf(broken[i]).units, nullptr) << i;
    EXPECT_EQ(*textOf(broken[i]).units, broken[i]) << i;
  }
}

TEST(TextDecoding, ReadsMacRoman) {
  EXPECT_EQ(utf8FromMacRoman("plain \x80\xD2q\xD3 \xDB\xF0\xFF"),
            "plain \u00C4\u201Cq\u201D \u20AC\uF8FF\u02C7");
}
