// Files that are cut off or changed at random: reading ends with an error that names the offset, or
// reads something else, in little memory.
#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "actionfiles/ActionFileError.h"
#include "actionfiles/ActionFileReader.h"
#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/AllocationCounter.h"
#include "tests/actionfiles/RandomSteps.h"
#include "tests/support/Build.h"

using namespace actionfiles;
using namespace testing_support;

namespace {

/// From one place in a file to the next that is tried.
constexpr std::size_t kStep = kSanitized ? 5 : 1;

/// Hands its bytes out one at a time, and does not know how many there are, like a pipe.
class Trickle : public ByteSource {
 public:
  explicit Trickle(std::string_view bytes) : left_(bytes) {}

  const std::string& name() const override { return name_; }
  std::optional<std::uint64_t> size() const override { return std::nullopt; }
  std::string_view next() override {
    const std::string_view first = left_.substr(0, 1);
    left_.remove_prefix(first.size());
    return first;
  }

 private:
  std::string name_ = "FILE";
  std::string_view left_;
};

/// Every item type and form.
std::string fullFile() {
  std::vector<Step> steps;
  for (Value& value : everyType()) steps.push_back(stepWith(std::move(value)));
  return written(setOf(std::move(steps)));
}

/// Whether the file can be read. An error must be well-formed and name an offset in the file.
bool isReadable(ByteSource& source, std::size_t size) {
  try {
    readAll(source);
    return true;
  } catch (const ActionFileError& error) {
    const std::string what = error.what();
    EXPECT_LE(error.offset(), size) << what;
    EXPECT_NE(what.find(": at byte " + std::to_string(error.offset()) + ": "), std::string::npos)
        << what;
    EXPECT_NE(what.find(" is expected, found "), std::string::npos) << what;
    EXPECT_TRUE(std::all_of(what.begin(), what.end(), [](char c) { return c >= ' '; })) << what;
    return false;
  }
}

bool isReadable(const std::string& bytes) {
  MemorySource source(bytes, "FILE");
  return isReadable(source, bytes.size());
}

class Mutator {
 public:
  explicit Mutator(std::uint32_t seed) : random_(seed) {}

  std::string operator()(std::string bytes) {
    for (std::uint32_t i = 1 + below(8); i > 0; --i) change(bytes);
    return bytes;
  }

 private:
  std::uint32_t below(std::size_t limit) { return static_cast<std::uint32_t>(random_() % limit); }

  void change(std::string& bytes) {
    const std::size_t place = below(bytes.size() - 4);
    switch (below(6)) {
      case 0:
        bytes[place] = static_cast<char>(random_());
        break;
      case 1:
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << below(8)));
        break;
      case 2: {
        // A length that nothing can hold, or that almost everything can.
        const std::uint32_t length =
            below(2) == 0 ? below(std::size_t{1} << 32) : below(bytes.size());
        for (int i = 0; i < 4; ++i) {
          bytes[place + static_cast<std::size_t>(i)] = static_cast<char>(length >> (24 - 8 * i));
        }
        break;
      }
      case 3:
        bytes.replace(place, 4, kCodes[below(std::size(kCodes))]);
        break;
      case 4:
        bytes.erase(place, 1 + below(20));
        bytes.resize(std::max<std::size_t>(bytes.size(), 8));
        break;
      default:
        bytes.insert(place, bytes.substr(below(bytes.size()), below(40)));
    }
  }

  static constexpr const char* kCodes[] = {"long", "comp", "doub", "UntF", "bool", "enum", "type",
                                           "GlbC", "Objc", "GlbO", "VlLs", "obj ", "TEXT", "tdta",
                                           "Pth ", "alis", "bkmk", "UnFl", "ObAr", "prop", "name"};
  std::mt19937 random_;
};

/// What a file that cannot be read says that it expects, without the number at its end.
void collectExpected(ByteSource&& source, std::set<std::string>& expected) {
  try {
    readAll(source);
  } catch (const ActionFileError& error) {
    const std::string what = error.what();
    const std::size_t begin = what.find(": ", what.find("byte ")) + 2;
    const std::string name = what.substr(begin, what.find(" is expected") - begin);
    expected.insert(name.substr(0, name.find_last_not_of("0123456789") + 1));
  }
}

TEST(BrokenActionFile, MayGoOnAfterItsEndInAnotherPiece) {
  const std::string bytes = fullFile();
  Trickle whole(bytes);
  EXPECT_NO_THROW(readAll(whole));
  const std::string longer = bytes + "x";
  Trickle source(longer);
  EXPECT_THAT([&] { readAll(source); },
              testing::ThrowsMessage<ActionFileError>(
                  "FILE: at byte " + std::to_string(bytes.size()) +
                  ": the end of the file is expected, found further bytes"));
}

/// Every place is cut off, with the length of the file known and not, and changed to the largest
/// number.
TEST(BrokenActionFile, NamesEachPartThatItLacks) {
  std::vector<Step> steps;
  steps.push_back(stepOf(codeId("setd"), "Set", {}));
  for (Value& value : everyType()) steps.push_back(stepWith(std::move(value)));
  const std::string full = written(setOf(std::move(steps)));
  std::set<std::string> expected;
  for (std::size_t at = 0; at < full.size(); ++at) {
    const std::string cut = full.substr(0, at);
    collectExpected(MemorySource(cut, "FILE"), expected);
    collectExpected(Trickle(cut), expected);
    std::string changed = full;
    changed.replace(at, 4, "\xFF\xFF\xFF\xFF");
    collectExpected(MemorySource(changed, "FILE"), expected);
  }
  EXPECT_THAT(expected,
              testing::UnorderedElementsAreArray({"a Boolean",
                                                  "a colour",
                                                  "a floating-point number",
                                                  "a form of a reference",
                                                  "a four-character code",
                                                  "a function key",
                                                  "a length of data",
                                                  "a length of data of at most ",
                                                  "a number of UTF-16 units",
                                                  "a number of UTF-16 units of at most ",
                                                  "a number of actions",
                                                  "a number of actions of at most ",
                                                  "a number of floating-point numbers",
                                                  "a number of floating-point numbers of at most ",
                                                  "a number of forms",
                                                  "a number of forms of at most ",
                                                  "a number of items",
                                                  "a number of items of at most ",
                                                  "a number of keys",
                                                  "a number of keys of at most ",
                                                  "a number of objects",
                                                  "a number of steps",
                                                  "a number of steps of at most ",
                                                  "a step's dialog options",
                                                  "a unit",
                                                  "an event ('TEXT' or 'long')",
                                                  "an event's code",
                                                  "an identifier",
                                                  "an index",
                                                  "an integer",
                                                  "an integer of 64 bits",
                                                  "an item type",
                                                  "an offset",
                                                  "the end of the file",
                                                  "the length of a command's name",
                                                  "the length of a command's name of at most ",
                                                  "the length of a string ID",
                                                  "the length of a string ID of at most ",
                                                  "the length of an event's string ID",
                                                  "the length of an event's string ID of at most ",
                                                  "the rest of a Unicode text",
                                                  "the rest of a command's name",
                                                  "the rest of a string ID",
                                                  "the rest of an event's string ID",
                                                  "the rest of the data",
                                                  "the type 'UnFl'",
                                                  "the version 16 of an action file",
                                                  "whether a descriptor follows",
                                                  "whether the action is expanded",
                                                  "whether the command key is held",
                                                  "whether the set is expanded",
                                                  "whether the shift key is held",
                                                  "whether the step has a dialog",
                                                  "whether the step is enabled",
                                                  "whether the step is expanded"}));
}

}  // namespace

TEST(BrokenActionFile, IsRefusedIfItIsCutOffAnywhere) {
  const std::string bytes = fullFile();
  for (std::size_t length = 0; length < bytes.size(); length += kStep) {
    const std::string cut = bytes.substr(0, length);
    EXPECT_FALSE(isReadable(cut)) << length;
    Trickle pipe(cut);
    EXPECT_FALSE(isReadable(pipe, length)) << length;
  }
  EXPECT_TRUE(isReadable(bytes));
  Trickle pipe(bytes);
  EXPECT_TRUE(isReadable(pipe, bytes.size()));
}

TEST(BrokenActionFile, TakesLittleMemoryWhateverWasChangedInIt) {
  constexpr std::size_t kMegabyte = 1 << 20;
  constexpr std::size_t kChangedFiles = testing_support::kSanitized ? 2000 : 10000;
  const std::vector<std::string> originals = {fullFile(), written(RandomSteps(1).set(3)),
                                              written(RandomSteps(2).set(30))};
  const std::string large = written(RandomSteps(3).set(400));
  Mutator mutate(2024);
  int readable = 0;
  std::size_t most = 0;
  for (std::size_t i = 0; i < kChangedFiles; ++i) {
    const std::string bytes = mutate(i % 100 == 0 ? large : originals[i % originals.size()]);
    const AllocationCounter counter;
    if (isReadable(bytes)) ++readable;
    most = std::max(most, counter.peak());
  }
  EXPECT_LT(most, 64 * kMegabyte);
  EXPECT_GT(readable, 0);
  EXPECT_LT(readable, static_cast<int>(kChangedFiles));
  RecordProperty("readable", readable);
  RecordProperty("mostBytes", static_cast<int>(most));
}

TEST(BrokenActionFile, AsksForNoMemoryThatItsBytesDoNotFill) {
  // Every count and every length in the file, in turn, claims as much as it can.
  const std::string bytes = fullFile();
  for (std::size_t place = 0; place + 4 <= bytes.size(); place += kStep) {
    const std::string changed = std::string(bytes).replace(place, 4, "\x7F\xFF\xFF\xFF");
    Trickle pipe(changed);
    MemorySource source(changed);
    const AllocationCounter counter;
    isReadable(pipe, changed.size());
    isReadable(source, changed.size());
    ASSERT_LT(counter.largest(), 100 * bytes.size()) << place;
  }
}
