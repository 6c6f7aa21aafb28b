// The search for the plug-in's record in the keyboard-shortcuts file, and its contents.
#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <string_view>

#include "hostactions/ShortcutFile.h"
#include "tests/support/Machine.h"

using namespace simulator;
using namespace testing_support;

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kBlock = 200;
constexpr std::string_view kName = "M\0\0\0r\0\0\0v\0\0\0P\0\0\0h\0\0\0o\0\0\0"sv;

/// A record's fields, from the first byte after the name.
struct Fields {
  char control = 0, shift = 0, option = 0, key = 0, otherKey = 0;
};

std::string bytesOf(const Fields& fields) {
  std::string bytes(40, '\x7F');  // the bytes between the fields are ignored
  bytes[11] = fields.control;
  bytes[12] = fields.shift;
  bytes[13] = fields.option;
  bytes[18] = fields.key;
  bytes[20] = fields.otherKey;
  return bytes;
}

std::string record(const Fields& fields) { return std::string(kName) + bytesOf(fields); }

class ShortcutFile : public testing::Test {
 protected:
  /// The shortcut in a file of these bytes.
  std::optional<Shortcut> read(const std::string& bytes) {
    const auto folder = machine_.preferences() / "Adobe Photoshop CS5.1 Settings";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "Keyboard Shortcuts.psp", std::ios::binary) << bytes;
    Shortcut shortcut = {.modifier = 1, .key = 2};
    if (readPluginShortcut(shortcut)) return shortcut;
    EXPECT_EQ(shortcut.modifier, 1);
    EXPECT_EQ(shortcut.key, 2);
    return std::nullopt;
  }

  int modifierOf(const Fields& fields) {
    const auto shortcut = read(record(fields));
    return shortcut ? shortcut->modifier : -1;
  }

  int keyOf(const Fields& fields) {
    const auto shortcut = read(record(fields));
    return shortcut ? static_cast<unsigned char>(shortcut->key) : -1;
  }

  Machine machine_;
};

}  // namespace

TEST_F(ShortcutFile, Yields56ForShiftAnd58ForShiftWithOption) {
  EXPECT_EQ(modifierOf({.shift = 1}), 56);
  EXPECT_EQ(modifierOf({.shift = 1, .option = 1}), 58);
}

TEST_F(ShortcutFile, MergesModifiersByOrInAllEightCombinations) {
  EXPECT_EQ(modifierOf({}), 0);
  EXPECT_EQ(modifierOf({.control = 1}), 59);
  EXPECT_EQ(modifierOf({.shift = 1}), 56);
  EXPECT_EQ(modifierOf({.option = 1}), 58);
  EXPECT_EQ(modifierOf({.control = 1, .shift = 1}), 59);
  EXPECT_EQ(modifierOf({.control = 1, .option = 1}), 59);
  EXPECT_EQ(modifierOf({.shift = 1, .option = 1}), 58);
  EXPECT_EQ(modifierOf({.control = 1, .shift = 1, .option = 1}), 59);
}

TEST_F(ShortcutFile, TreatsAnyNonZeroFlagAsSet) {
  for (int flag = 1; flag < 256; ++flag) {
    ASSERT_EQ(modifierOf({.shift = static_cast<char>(flag)}), 56) << flag;
    ASSERT_EQ(modifierOf({.option = static_cast<char>(flag)}), 58) << flag;
    ASSERT_EQ(modifierOf({.control = static_cast<char>(flag)}), 59) << flag;
  }
}

TEST_F(ShortcutFile, TakesAnyKeyAtOffset18) {
  for (int key = 1; key < 256; ++key) {
    ASSERT_EQ(keyOf({.key = static_cast<char>(key), .otherKey = 'z'}), key);
  }
}

TEST_F(ShortcutFile, TakesAKeyAtOffset20OnlyIfItIsOneOfTheTwelve) {
  constexpr std::string_view kTwelve = "zxcv`abdemgo";
  for (int key = 0; key < 256; ++key) {
    const char character = static_cast<char>(key);
    const bool known = key != 0 && kTwelve.find(character) != kTwelve.npos;
    ASSERT_EQ(keyOf({.otherKey = character}), known ? key : 0) << key;
  }
}

TEST_F(ShortcutFile, YieldsKey0ForZeroAtOffset18AndQAtOffset20) {
  EXPECT_EQ(keyOf({.key = 0, .otherKey = 'q'}), 0);
}

TEST_F(ShortcutFile, FindsTheNameAtEveryPositionWithinOneBlock) {
  // The last three bytes of the name are zero, and so are the bytes after the block's 200, which
  // may complete a name.
  constexpr std::size_t kLastPosition = kBlock - kName.size() + 3;
  for (std::size_t position = 0; position < 3 * kBlock; ++position) {
    const auto shortcut =
        read(std::string(position, 'x') + record({.option = 1, .key = 'k'}) + "tail");
    ASSERT_EQ(shortcut.has_value(), position % kBlock <= kLastPosition) << position;
    if (!shortcut) continue;
    ASSERT_EQ(shortcut->key, 'k') << position;
    ASSERT_EQ(shortcut->modifier, 58) << position;
  }
}

TEST_F(ShortcutFile, ReadsARecordAfterABlocksEnd) {
  // The name ends with the block; all fields are in the next one.
  const std::string before(kBlock - kName.size(), '\0');
  const auto shortcut = read(before + record({.shift = 1, .otherKey = 'a'}));
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->modifier, 56);
  EXPECT_EQ(shortcut->key, 'a');
}

TEST_F(ShortcutFile, SkipsANameSplitBetweenTwoBlocks) {
  const std::string straddling = std::string(kBlock - 12, 'x') + record({.key = 's'});
  EXPECT_FALSE(read(straddling));
  const auto shortcut = read(straddling + record({.key = 'l'}));
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->key, 'l');
}

TEST_F(ShortcutFile, ReadsTheFirstOfTwoRecords) {
  const auto shortcut = read(record({.key = '1'}) + record({.shift = 1, .key = '2'}));
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->key, '1');
  EXPECT_EQ(shortcut->modifier, 0);
}

TEST_F(ShortcutFile, ReadsARecordThatEndsAfterItsLastField) {
  const std::string whole = record({.control = 1, .key = 0, .otherKey = 'g'});
  const auto shortcut = read(whole.substr(0, kName.size() + 21));
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->modifier, 59);
  EXPECT_EQ(shortcut->key, 'g');
}

TEST_F(ShortcutFile, CompletesATruncatedRecordFromThePreviousBlock) {
  // Cut off before the keys: offsets 18 and 20 still hold the end of the name.
  std::string bytes = record({.shift = 1}).substr(0, kName.size() + 14);
  auto shortcut = read(bytes);
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->modifier, 56);
  EXPECT_EQ(shortcut->key, 'o');
  // Only the name: the shift flag is its "P".
  shortcut = read(std::string(kName));
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->modifier, 56);
  EXPECT_EQ(shortcut->key, 'o');
  // A name far from the block's start does not reach the fields, which stay zero.
  shortcut = read(std::string(100, '\0') + std::string(kName));
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->modifier, 0);
  EXPECT_EQ(shortcut->key, 0);
}

TEST_F(ShortcutFile, FindsATruncatedNameIfThePreviousBlockCompletesIt) {
  // The previous block holds all but the beginning of the name, the last block only the beginning.
  std::string before(kBlock, 'x');
  before.replace(8, kName.size() - 8, kName.substr(8));
  EXPECT_FALSE(read(before));
  EXPECT_TRUE(read(before + std::string(kName.substr(0, 8))));
  EXPECT_FALSE(read(std::string(kName.substr(0, 8))));
}

TEST_F(ShortcutFile, SkipsTheRecordOfAnotherPlugIn) {
  const auto named = [](const char* name) {
    return shortcutsFile({{.plugIn = name, .key = 'k'}}, 10);
  };
  EXPECT_FALSE(read(named("MrvPh")));
  EXPECT_FALSE(read(named("MrvPaint")));
  EXPECT_FALSE(read(named("mrvPhotoshop")));
  EXPECT_TRUE(read(named("MrvPhotoshop")));
  EXPECT_TRUE(read(named("MrvPhone"))) << "six characters are compared";
}

TEST_F(ShortcutFile, IgnoresTheNameInSingleBytes) {
  EXPECT_FALSE(read("MrvPhotoshop" + bytesOf({.key = 'k'})));
}

TEST_F(ShortcutFile, YieldsNothingForFilesWithoutARecord) {
  for (const std::size_t size : {0U, 1U, 23U, 24U, 199U, 200U, 201U, 400U, 1000U}) {
    EXPECT_FALSE(read(std::string(size, '\0'))) << size;
    EXPECT_FALSE(read(std::string(size, 'M'))) << size;
  }
}

TEST_F(ShortcutFile, FindsTheRecordsThatTheSimulatedHostWrites) {
  for (const std::size_t position : {0U, 100U, 176U, 200U, 376U, 1000U}) {
    const ShortcutRecord other = {.plugIn = "Vignette", .control = true, .key = 'v'};
    const ShortcutRecord ours = {.plugIn = "MrvPhotoshop", .shift = true, .otherKey = 'e'};
    const auto shortcut = read(shortcutsFile({ours, other}, position));
    ASSERT_TRUE(shortcut) << position;
    EXPECT_EQ(shortcut->modifier, 56);
    EXPECT_EQ(shortcut->key, 'e');
  }
}
