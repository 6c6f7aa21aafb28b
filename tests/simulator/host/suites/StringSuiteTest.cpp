#include <array>

#include "tests/simulator/host/HostFixture.h"

namespace simulator {
namespace {

class StringSuite : public HostTest {
 protected:
  ASZString make(std::string_view text) {
    ASZString string = nullptr;
    EXPECT_EQ(strings_->MakeFromCString(text.data(), text.size(), &string), 0);
    return string;
  }

  /// The text; releases the string.
  std::string take(ASZString string) {
    std::string text(strings_->LengthAsCString(string) + 1, '#');
    EXPECT_EQ(strings_->AsCString(string, text.data(), static_cast<ASUInt32>(text.size()), 1), 0);
    EXPECT_EQ(strings_->Release(string), 0);
    text.pop_back();
    return text;
  }
};

TEST_F(StringSuite, LeavesTheTerminatorOutOfLengths) {
  const ASZString string = make("h\u00F6\U0001F600");
  EXPECT_EQ(strings_->LengthAsUnicodeCString(string), 4u);
  EXPECT_EQ(strings_->LengthAsCString(string), 7u);
  EXPECT_EQ(strings_->LengthAsPascalString(string), 7u);
  strings_->Release(string);
}

TEST_F(StringSuite, TakesAndReturnsUtf16) {
  std::array<ASUnicode, 3> units = {'a', 0x20AC, 'b'};
  ASZString string = nullptr;
  EXPECT_EQ(strings_->MakeFromUnicode(units.data(), 6, &string), 0);
  std::array<ASUnicode, 4> read = {1, 1, 1, 1};
  EXPECT_EQ(strings_->AsUnicodeCString(string, read.data(), 4, 1), 0);
  EXPECT_THAT(read, testing::ElementsAre('a', 0x20AC, 'b', 0));
  EXPECT_EQ(take(string), "a\u20ACb");
}

TEST_F(StringSuite, CutsOrRefusesTextTooLongForItsDestination) {
  const ASZString string = make("abc");
  std::array<char, 3> buffer{};
  EXPECT_EQ(strings_->AsCString(string, buffer.data(), 3, 1), paramErr);
  EXPECT_EQ(strings_->AsCString(string, buffer.data(), 3, 0), 0);
  EXPECT_STREQ(buffer.data(), "ab");
  EXPECT_EQ(strings_->AsCString(string, buffer.data(), 0, 0), paramErr);
  strings_->Release(string);
}

TEST_F(StringSuite, ReadsAndWritesPascalStrings) {
  const std::array<unsigned char, 4> pascal = {3, 'a', 'b', 'c'};
  ASZString string = nullptr;
  EXPECT_EQ(strings_->MakeFromPascalString(pascal.data(), 4, &string), 0);
  std::array<unsigned char, 4> read{};
  EXPECT_EQ(strings_->AsPascalString(string, read.data(), 4, 1), 0);
  EXPECT_EQ(read, pascal);
  EXPECT_EQ(strings_->AsPascalString(string, read.data(), 3, 1), paramErr);
  EXPECT_EQ(take(string), "abc");
}

TEST_F(StringSuite, WritesNumbers) {
  ASZString string = nullptr;
  strings_->MakeRomanizationOfInteger(-12, &string);
  EXPECT_EQ(take(string), "-12");
  strings_->MakeRomanizationOfFixed(98304, 3, 0, 1, &string);
  EXPECT_EQ(take(string), "+1.500");
  strings_->MakeRomanizationOfFixed(98304, 3, 1, 0, &string);
  EXPECT_EQ(take(string), "1.5");
  strings_->MakeRomanizationOfFixed(655360, 0, 1, 0, &string);
  EXPECT_EQ(take(string), "10");
  strings_->MakeRomanizationOfDouble(0.25, &string);
  EXPECT_EQ(take(string), "0.25");
}

TEST_F(StringSuite, CountsReferences) {
  const ASZString string = make("abc");
  EXPECT_EQ(strings_->AddRef(string), 0);
  EXPECT_EQ(strings_->Release(string), 0);
  EXPECT_EQ(take(string), "abc");
  EXPECT_EQ(strings_->Release(string), paramErr);
  EXPECT_THAT(misuses(), testing::ElementsAre("ASZStringSuite.Release: string 1 was freed before"));
}

TEST_F(StringSuite, DoesNotRequireTheEmptyStringToBeReleased) {
  const ASZString empty = strings_->GetEmpty();
  EXPECT_TRUE(strings_->IsEmpty(empty));
  EXPECT_EQ(strings_->GetEmpty(), empty);
  EXPECT_EQ(strings_->Release(empty), 0);
}

TEST_F(StringSuite, MakesIndependentCopies) {
  const ASZString string = make(" abc... ");
  ASZString copy = nullptr;
  EXPECT_EQ(strings_->Copy(string, &copy), 0);
  EXPECT_EQ(strings_->TrimSpaces(copy), 0);
  EXPECT_EQ(strings_->TrimEllipsis(copy), 0);
  EXPECT_EQ(take(copy), "abc");
  EXPECT_EQ(take(string), " abc... ");
}

TEST_F(StringSuite, ReplacesPlaceholders) {
  const ASZString string = make("&Save ^0 as ^1, ^0");
  const ASZString value = make("it");
  EXPECT_TRUE(strings_->WillReplace(string, 0));
  EXPECT_FALSE(strings_->WillReplace(string, 2));
  EXPECT_EQ(strings_->Replace(string, 0, value), 0);
  EXPECT_EQ(strings_->RemoveAccelerators(string), 0);
  strings_->Release(value);
  EXPECT_EQ(take(string), "Save it as ^1, it");
}

TEST_F(StringSuite, RecognisesWhiteSpace) {
  const ASZString blank = make(" \t\n");
  const ASZString text = make(" a ");
  EXPECT_TRUE(strings_->IsAllWhiteSpace(blank));
  EXPECT_FALSE(strings_->IsAllWhiteSpace(text));
  strings_->TrimSpaces(text);
  EXPECT_EQ(take(text), "a");
  strings_->Release(blank);
}

TEST_F(StringSuite, SharesStringsWithDescriptors) {
  const ASZString string = make("\u00E9t\u00E9");
  PIActionDescriptor descriptor = descriptorOf("[]");
  EXPECT_EQ(descriptors_->PutZString(descriptor, kKeyName, string), 0);
  strings_->Release(string);
  ASZString read = nullptr;
  ASSERT_EQ(descriptors_->GetZString(descriptor, kKeyName, &read), 0);
  EXPECT_EQ(strings_->LengthAsUnicodeCString(read), 3u);
  EXPECT_EQ(take(read), "\u00E9t\u00E9");
}

}  // namespace
}  // namespace simulator
