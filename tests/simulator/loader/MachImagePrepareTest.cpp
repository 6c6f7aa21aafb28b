// Preparing a file gives an image or a LoadError, whatever bytes the file holds.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "simulator/loader/MachImage.h"
#include "tests/simulator/loader/Modules.h"

namespace simulator {
namespace {

constexpr int kFilesPerModule = MRV_LONG_TESTS ? 2500 : 500;
const char* const kModules[] = {"Lifetime", "ExceptionsFrameless", "Imports", "HandWrittenFrame"};

// Whether the file was taken. Exceptions other than LoadError reach the test and fail it.
bool prepares(const std::vector<std::byte>& bytes) {
  try {
    MachImage::prepare(MachFile(bytes), TestLibraries(), "mutated");
    return true;
  } catch (const LoadError& error) {
    EXPECT_FALSE(std::string(error.what()).empty());
    return false;
  }
}

class Mutations {
 public:
  explicit Mutations(unsigned seed) : random_(seed) {}

  std::vector<std::byte> apply(std::vector<std::byte> bytes) {
    // Half of the changes go to the load commands, where a changed byte has the most effect.
    for (std::size_t i = 1 + pick(8); i > 0; --i) {
      const std::size_t reach =
          pick(2) == 0 ? std::min<std::size_t>(bytes.size(), 2048) : bytes.size();
      change(bytes, pick(reach));
    }
    if (pick(10) == 0) bytes.resize(pick(bytes.size()));
    return bytes;
  }

 private:
  std::size_t pick(std::size_t count) { return random_() % count; }

  void change(std::vector<std::byte>& bytes, std::size_t at) {
    static constexpr int kTellingValues[] = {0, 1, 0x7F, 0x80, 0xFF};
    if (pick(2) == 0) {
      bytes[at] ^= std::byte{1} << static_cast<int>(pick(8));
    } else {
      bytes[at] = static_cast<std::byte>(kTellingValues[pick(std::size(kTellingValues))]);
    }
  }

  std::mt19937 random_;
};

TEST(MachImagePrepare, TakesOrRefusesMutatedFilesWithoutACrash) {
  int refused = 0;
  int taken = 0;
  for (const char* const module : kModules) {
    const std::vector<std::byte> good = moduleBytes(module);
    ASSERT_TRUE(prepares(good)) << module;
    for (unsigned seed = 0; seed < kFilesPerModule; ++seed) {
      SCOPED_TRACE(std::string(module) + ", seed " + std::to_string(seed));
      ++(prepares(Mutations(seed).apply(good)) ? taken : refused);
    }
  }
  // Unless both results are frequent, the mutations test too little.
  EXPECT_GT(refused, kFilesPerModule / 2);
  EXPECT_GT(taken, kFilesPerModule / 2);
}

TEST(MachImagePrepare, RefusesTruncatedFiles) {
  const std::vector<std::byte> good = moduleBytes("Lifetime");
  for (std::size_t size = 0; size < good.size(); size += size < 4096 ? 1 : 97) {
    SCOPED_TRACE(size);
    EXPECT_FALSE(prepares({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)}));
  }
}

}  // namespace
}  // namespace simulator
