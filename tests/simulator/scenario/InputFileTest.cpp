#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>

#include "simulator/scenario/InputFile.h"
#include "tests/support/Process.h"

namespace {

using namespace simulator;

std::string bytesAt(const ByteSource& source, std::uint64_t offset, std::size_t size) {
  std::string bytes(size, '\0');
  bytes.resize(source.read(offset, bytes.data(), size));
  return bytes;
}

/// A pipe that holds a text and has no writer any more, under a name.
class FullPipe {
 public:
  explicit FullPipe(const std::string& text) {
    EXPECT_EQ(pipe(ends_.data()), 0);
    EXPECT_EQ(write(ends_[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    close(ends_[1]);
  }
  ~FullPipe() { close(ends_[0]); }
  std::string name() const { return "/proc/self/fd/" + std::to_string(ends_[0]); }

 private:
  std::array<int, 2> ends_{};
};

TEST(InputFile, ReadsAtAnyOffset) {
  const testing_support::TemporaryFolder folder;
  testing_support::writeFile(folder.file("a"), "0123456789");
  const InputFile file(folder.file("a"));
  EXPECT_EQ(bytesAt(file, 7, 100), "789");
  EXPECT_EQ(bytesAt(file, 0, 3), "012");
  EXPECT_EQ(bytesAt(file, 10, 1), "");
  EXPECT_EQ(file.text(), "0123456789");
}

TEST(InputFile, ReadsAPipeMoreThanOnce) {
  const FullPipe pipe("0123456789");
  const InputFile file(pipe.name());
  EXPECT_EQ(bytesAt(file, 4, 3), "456");
  EXPECT_EQ(file.text(), "0123456789");
  EXPECT_EQ(file.text(), "0123456789");
  EXPECT_EQ(bytesAt(file, 10, 1), "");
}

TEST(InputFile, LeavesNoFileBehindForAPipe) {
  const testing_support::TemporaryFolder folder;
  setenv("TMPDIR", folder.file("").c_str(), 1);
  const FullPipe pipe("text");
  const InputFile file(pipe.name());
  EXPECT_EQ(file.text(), "text");
  EXPECT_EQ(rmdir(folder.file("").c_str()), 0) << "the folder is empty while the file is open";
}

TEST(InputFile, KnowsAFileUnderAnotherName) {
  const testing_support::TemporaryFolder folder;
  testing_support::writeFile(folder.file("a"), "");
  testing_support::writeFile(folder.file("b"), "");
  ASSERT_EQ(symlink(folder.file("a").c_str(), folder.file("link").c_str()), 0);
  EXPECT_EQ(InputFile(folder.file("a")).identity(), InputFile(folder.file("link")).identity());
  EXPECT_NE(InputFile(folder.file("a")).identity(), InputFile(folder.file("b")).identity());
}

TEST(InputFile, NamesTheFileThatCannotBeRead) {
  const auto reason = [](const std::string& file) -> std::string {
    try {
      const InputFile input(file);
    } catch (const BadInput& error) {
      return error.what();
    }
    return "nothing wrong";
  };
  EXPECT_EQ(reason("/nowhere/a\nb"), "/nowhere/a\\nb: cannot be read: No such file or directory");
  EXPECT_EQ(reason("/"), "/: cannot be read: Is a directory");
  EXPECT_EQ(reason(""), "the name of an input file is empty");
}

}  // namespace
