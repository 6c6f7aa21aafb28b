#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "hostactions/FileChunk.h"
#include "hostutil/File.h"

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kPattern = "pattern";

/// A temporary file of these bytes, positioned at its start.
File fileOf(std::string_view bytes) {
  File file(std::tmpfile());
  EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file.get()), bytes.size());
  EXPECT_EQ(std::fseek(file.get(), 0, SEEK_SET), 0);
  return file;
}

/// `size` bytes 'x' with `text` at `position`.
std::string bytesWith(std::string_view text, std::size_t position, std::size_t size) {
  return std::string(size, 'x').replace(position, text.size(), text);
}

/// The chunk after reading all of `bytes`.
FileChunk lastChunkOf(std::string_view bytes) {
  const File file = fileOf(bytes);
  FileChunk chunk;
  for (std::size_t left = bytes.size(); left > 0; left -= chunk.size) {
    EXPECT_TRUE(chunk.read(file.get()));
  }
  return chunk;
}

TEST(FileChunk, ReadsAFileInChunksOfItsCapacity) {
  const File file = fileOf(bytesWith("first", 0, 200) + bytesWith("second", 0, 200) + "third");
  FileChunk chunk;
  EXPECT_TRUE(chunk.read(file.get()));
  EXPECT_EQ(chunk.size, 200U);
  EXPECT_EQ(chunk.find("first"), 0U);
  EXPECT_TRUE(chunk.read(file.get()));
  EXPECT_EQ(chunk.size, 200U);
  EXPECT_EQ(chunk.find("second"), 0U);
  EXPECT_TRUE(chunk.read(file.get()));
  EXPECT_EQ(chunk.size, 5U);
  EXPECT_EQ(chunk.find("third"), 0U);
  EXPECT_FALSE(chunk.read(file.get()));
  EXPECT_EQ(chunk.size, 0U);
}

TEST(FileChunk, HoldsNothingAfterReadingAnEmptyFile) {
  const File file = fileOf("");
  FileChunk chunk;
  EXPECT_FALSE(chunk.read(file.get()));
  EXPECT_EQ(chunk.size, 0U);
  EXPECT_EQ(chunk.find(kPattern), 0U);
}

TEST(FileChunk, FindsAPatternAtEveryPositionThatHoldsAllOfIt) {
  for (std::size_t position = 0; position + kPattern.size() <= 200; ++position) {
    EXPECT_EQ(lastChunkOf(bytesWith(kPattern, position, 200)).find(kPattern), position);
  }
}

TEST(FileChunk, FindsAPatternThatIsTheWholeChunk) {
  EXPECT_EQ(lastChunkOf(kPattern).find(kPattern), 0U);
}

TEST(FileChunk, FindsAPatternOfOneCharacterAtItsLastByte) {
  EXPECT_EQ(lastChunkOf(bytesWith("p", 199, 200)).find("p"), 199U);
}

TEST(FileChunk, FindsTheLongestPatternAtItsEnd) {
  const std::string pattern(FileChunk::kLongestPattern, 'p');
  EXPECT_EQ(lastChunkOf(bytesWith(pattern, 176, 200)).find(pattern), 176U);
}

TEST(FileChunk, FindsTheFirstOfSeveralPatterns) {
  const std::string bytes = bytesWith(kPattern, 20, 200).replace(100, kPattern.size(), kPattern);
  EXPECT_EQ(lastChunkOf(bytes).find(kPattern), 20U);
}

TEST(FileChunk, ReturnsItsSizeIfThePatternIsAbsent) {
  EXPECT_EQ(lastChunkOf(std::string(200, 'x')).find(kPattern), 200U);
  EXPECT_EQ(lastChunkOf(std::string(50, 'x')).find(kPattern), 50U);
  EXPECT_EQ(lastChunkOf(bytesWith("Pattern", 10, 200)).find(kPattern), 200U);
}

TEST(FileChunk, DoesNotFindAPatternSplitBetweenTwoChunks) {
  for (std::size_t position = 194; position < 200; ++position) {
    const File file = fileOf(bytesWith(kPattern, position, 400));
    FileChunk chunk;
    for (int i = 0; i < 2; ++i) {
      EXPECT_TRUE(chunk.read(file.get()));
      EXPECT_EQ(chunk.find(kPattern), 200U) << position;
    }
  }
}

TEST(FileChunk, CompletesAPatternAtItsEndFromThePreviousChunk) {
  for (std::size_t size = 1; size < kPattern.size(); ++size) {
    const std::string before = bytesWith(kPattern.substr(size), 10 + size, 200);
    const std::string last = std::string(10, 'x') + std::string(kPattern.substr(0, size));
    EXPECT_EQ(lastChunkOf(before + last).find(kPattern), 10U) << size;
  }
}

TEST(FileChunk, CompletesAPatternAtItsEndFromZerosIfThereIsNoPreviousChunk) {
  EXPECT_EQ(lastChunkOf("xxp").find("p\0\0"sv), 2U);
  EXPECT_EQ(lastChunkOf("xxp").find("p\0x"sv), 3U);
}

TEST(FileChunk, CompletesAPatternAtItsEndFromZerosIfItIsFull) {
  const std::string full = bytesWith("p", 199, 200);
  EXPECT_EQ(lastChunkOf(full).find("p\0\0"sv), 199U);
  EXPECT_EQ(lastChunkOf(full + full).find("p\0\0"sv), 199U);
}

TEST(FileChunk, DoesNotFindAPatternThatBeginsInThePreviousChunkAfterAShortRead) {
  const std::string before = bytesWith(kPattern, 50, 200);
  EXPECT_EQ(lastChunkOf(before + std::string(50, 'x')).find(kPattern), 50U);
  EXPECT_EQ(lastChunkOf(before + "x").find(kPattern), 1U);
}

TEST(FileChunk, DoesNotFindAPatternThatAShortReadHasOverwritten) {
  const std::string before = bytesWith(kPattern, 0, 200);
  EXPECT_EQ(lastChunkOf(before + "xx").find(kPattern), 2U);
}

TEST(FileChunk, FindsAPatternInAShortLastChunk) {
  EXPECT_EQ(lastChunkOf(std::string(200, 'x') + "xx" + std::string(kPattern)).find(kPattern), 2U);
}

}  // namespace
