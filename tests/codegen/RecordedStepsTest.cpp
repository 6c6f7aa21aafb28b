#include <PIGeneral.h>

#include <bit>
#include <cstring>
#include <limits>
#include <new>

#include "codegen/PathConversion.h"
#include "codegen/RecordedSteps.h"
#include "codegen/TextConversion.h"
#include "simulator/base/Faults.h"
#include "tests/codegen/GeneratorFixture.h"
#include "tests/support/AlteredSuite.h"

namespace {

using testing::ElementsAre;

std::vector<int> played;

template <int kStep, int kResult = 0>
int step() {
  played.push_back(kStep);
  return kResult;
}

constexpr RecordedAction kActions[] = {
    {"Set", "First", 2}, {"Set", "Empty", 0}, {"Set", "Second", 3},
    {"Set", "First", 1}, {"Set", "Third", 2}, {nullptr, nullptr, 0},
};

constexpr RecordedStep kSteps[] = {
    {"Set", "First", "", step<1>, true, true},
    {"Set", "First", "", step<2>, true, true},
    {"Set", "Second", "", step<3>, false, true},
    {"Set", "Second", "", step<4, -25920>, true, true},
    {"Set", "Second", "", step<5>, true, true},
    {"Set", "First", "", step<6>, true, true},
    {"Set", "Third", "", []() -> int { throw std::uint32_t{0x5061726D}; }, true, true},
    {"Set", "Third", "", []() -> int { throw std::bad_alloc(); }, true, true},
    {nullptr, nullptr, nullptr, nullptr, false, false},
};

int play(const char* set, const char* action) {
  played.clear();
  return playRecordedAction(kActions, kSteps, set, action);
}

TEST(RecordedSteps, ArePlayedInOrderForTheFirstActionOfTheName) {
  EXPECT_EQ(play("Set", "First"), 0);
  EXPECT_THAT(played, ElementsAre(1, 2));
  EXPECT_EQ(play("Set", "Empty"), 0);
  EXPECT_THAT(played, ElementsAre());
}

TEST(RecordedSteps, ArePlayedUntilOneFailsWithoutThoseThatAreNotEnabled) {
  EXPECT_EQ(play("Set", "Second"), -25920);
  EXPECT_THAT(played, ElementsAre(4));
}

TEST(RecordedSteps, AreNotFoundUnderAnotherName) {
  EXPECT_EQ(play("Other", "First"), errMissingParameter);
  EXPECT_EQ(play("Set", "Fourth"), errMissingParameter);
  EXPECT_EQ(play(nullptr, "First"), errMissingParameter);
  EXPECT_EQ(play("Set", nullptr), errMissingParameter);
  EXPECT_THAT(played, ElementsAre());
}

TEST(RecordedSteps, LetNoExceptionOut) {
  EXPECT_EQ(play("Set", "Third"), 0x5061726D) << "a suite that the host refuses";
  constexpr RecordedAction kLast[] = {{"Set", "Third", 1}, {nullptr, nullptr, 0}};
  EXPECT_EQ(playRecordedAction(kLast, kSteps + 7, "Set", "Third"), memFullErr);
}

class RuntimeIDs : public GeneratorFixture {};

TEST_F(RuntimeIDs, AreLookedUpOnce) {
  static int calls;
  static DescriptorTypeID number;
  testing_support::AlteredSuite control(sPSActionControl);
  control->StringIDToTypeID = [](const char*, DescriptorTypeID* id) -> OSErr {
    ++calls;
    *id = number;
    return number == 0 ? -1 : 0;
  };
  RuntimeID first("first");
  RuntimeID second("second");
  EXPECT_EQ(lookUp({&first, &second}), -1);
  EXPECT_EQ(calls, 1) << "the first that fails ends the look-up";
  number = 7;
  EXPECT_EQ(lookUp({&first, &second}), 0);
  EXPECT_EQ(DescriptorTypeID{second}, 7u);
  EXPECT_EQ(lookUp({&first, &second}), 0);
  EXPECT_EQ(calls, 3);
}

class RecordedFiles : public GeneratorFixture {};

TEST_F(RecordedFiles, AreRefusedIfTheyDoNotExist) {
  OwnedAlias alias;
  EXPECT_EQ(aliasOfPath("/no/such/file", alias), fnfErr);
  EXPECT_FALSE(alias);
  OwnedBookmark bookmark;
  EXPECT_EQ(bookmarkOfPath("/no/such/file", bookmark), fnfErr);
  EXPECT_FALSE(bookmark);
}

TEST_F(RecordedFiles, AreFoundByTheirPaths) {
  const std::string path = folder() / "picture";
  testing_support::writeFile(path, "");
  OwnedAlias alias;
  for (int time = 0; time < 2; ++time) EXPECT_EQ(aliasOfPath(path.c_str(), alias), 0);
  EXPECT_EQ(pathInAlias(reinterpret_cast<AliasHandle>(alias.get())), path);
  OwnedBookmark bookmark;
  for (int time = 0; time < 2; ++time) EXPECT_EQ(bookmarkOfPath(path.c_str(), bookmark), 0);
  EXPECT_EQ(pathInBookmark(bookmark.get()), path);
}

TEST(RecordedNumbers, KeepTheBitsThatNoLiteralHas) {
  EXPECT_EQ(realOfBits(0x7FF0000000000000), std::numeric_limits<double>::infinity());
  EXPECT_EQ(std::bit_cast<std::uint64_t>(realOfBits(0xFFF8000000000123)), 0xFFF8000000000123);
}

TEST_F(RecordedFiles, AreMadeOfTheirBytes) {
  const std::string bytes("a\0b\xFF", 4);
  OwnedAlias alias;
  ASSERT_EQ(aliasOfBytes(bytes.data(), bytes.size(), alias), 0);
  EXPECT_EQ(std::string(*alias.get(), bytes.size()), bytes);
  OwnedBookmark bookmark;
  ASSERT_EQ(bookmarkOfBytes(bytes.data(), bytes.size(), bookmark), 0);
  ASSERT_EQ(CFDataGetLength(bookmark.get()), 4);
  EXPECT_EQ(std::memcmp(CFDataGetBytePtr(bookmark.get()), bytes.data(), bytes.size()), 0);
}

TEST_F(RecordedFiles, AreRefusedIfThereIsNoMemoryForTheirBytes) {
  simulator::theFaults().add({"Mac.PtrToHand", memFullErr});
  OwnedAlias alias;
  EXPECT_EQ(aliasOfBytes("x", 1, alias), memFullErr);
  EXPECT_FALSE(alias);
  simulator::theFaults().add({"Mac.CFDataCreate", -1});
  OwnedBookmark bookmark;
  EXPECT_EQ(bookmarkOfBytes("x", 1, bookmark), memFullErr);
  EXPECT_FALSE(bookmark);
}

class RecordedTexts : public GeneratorFixture {};

TEST_F(RecordedTexts, HaveEveryUnit) {
  const std::u16string units(u"a\0\xD800z", 4);
  OwnedText text;
  ASSERT_EQ(textOfUnits(units.data(), units.size(), text), 0);
  EXPECT_EQ(textToUnits(text.get()), units);
}

TEST_F(RecordedTexts, AreRefusedWithTheHostsError) {
  simulator::theFaults().add({"ASZStringSuite.MakeFromUnicode", -5});
  OwnedText text;
  EXPECT_EQ(textOfUnits(u"x", 1, text), -5);
  EXPECT_FALSE(text);
}

}  // namespace
