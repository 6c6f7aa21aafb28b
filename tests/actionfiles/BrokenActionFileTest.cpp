// Files that are cut off or changed at random: reading ends with an error that names the offset, or
// reads something else, in little memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "actionfiles/ActionFileError.h"
#include "actionfiles/ActionFileReader.h"
#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/AllocationCounter.h"
#include "tests/actionfiles/RandomSteps.h"

using namespace actionfiles;
using namespace testing_support;

namespace {

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

}  // namespace

TEST(BrokenActionFile, IsRefusedIfItIsCutOffAnywhere) {
  const std::string bytes = fullFile();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
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
  const std::vector<std::string> originals = {fullFile(), written(RandomSteps(1).set(3)),
                                              written(RandomSteps(2).set(30))};
  const std::string large = written(RandomSteps(3).set(400));
  Mutator mutate(2024);
  int readable = 0;
  std::size_t most = 0;
  for (std::size_t i = 0; i < 10000; ++i) {
    const std::string bytes = mutate(i % 100 == 0 ? large : originals[i % originals.size()]);
    const AllocationCounter counter;
    if (isReadable(bytes)) ++readable;
    most = std::max(most, counter.peak());
  }
  EXPECT_LT(most, 64 * kMegabyte);
  EXPECT_GT(readable, 0);
  EXPECT_LT(readable, 10000);
  RecordProperty("readable", readable);
  RecordProperty("mostBytes", static_cast<int>(most));
}

TEST(BrokenActionFile, AsksForNoMemoryThatItsBytesDoNotFill) {
  // Every count and every length in the file, in turn, claims as much as it can.
  const std::string bytes = fullFile();
  for (std::size_t place = 0; place + 4 <= bytes.size(); ++place) {
    const std::string changed = std::string(bytes).replace(place, 4, "\x7F\xFF\xFF\xFF");
    Trickle pipe(changed);
    MemorySource source(changed);
    const AllocationCounter counter;
    isReadable(pipe, changed.size());
    isReadable(source, changed.size());
    ASSERT_LT(counter.largest(), 100 * bytes.size()) << place;
  }
}
