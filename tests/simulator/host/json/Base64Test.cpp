#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "simulator/host/json/Base64.h"

namespace simulator {
namespace {

TEST(Base64, WritesPadding) {
  EXPECT_EQ(base64(""), "");
  EXPECT_EQ(base64("f"), "Zg==");
  EXPECT_EQ(base64("fo"), "Zm8=");
  EXPECT_EQ(base64("foo"), "Zm9v");
  EXPECT_EQ(base64("\xFF\xFE\xFD"), "//79");
}

TEST(Base64, ReadsWhatItWrote) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) {
    EXPECT_EQ(fromBase64(base64(bytes)), bytes);
    bytes += static_cast<char>(i);
  }
}

TEST(Base64, RefusesTextThatIsNotBase64) {
  for (const char* text : {"Z", "Zg=", "Zg", "Z===", "====", "Zg=a", "Z g=", "Zm8-"}) {
    EXPECT_EQ(fromBase64(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace simulator
