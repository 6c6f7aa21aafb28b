// Sources that are files, streams and memory.
#include <gmock/gmock.h>

#include <cstdio>
#include <string>

#include "actionfiles/ActionFileError.h"
#include "actionfiles/ActionFileReader.h"
#include "actionfiles/ByteSource.h"
#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/RandomSteps.h"
#include "tests/support/Process.h"

using namespace actionfiles;
using namespace testing_support;

namespace {

std::string errorOfFile(const std::string& file) {
  try {
    FileSource source(file);
    ActionFileReader reader(source);
  } catch (const ActionFileError& error) {
    return error.what();
  }
  return "";
}

}  // namespace

TEST(ByteSource, NamesTheFileThatCannotBeRead) {
  EXPECT_EQ(errorOfFile("/nowhere/missing.atn"),
            "/nowhere/missing.atn: cannot be read: No such file or directory");
  EXPECT_EQ(errorOfFile("/tmp"), "/tmp: cannot be read: Is a directory");
}

TEST(ByteSource, OfAnEmptyFileEndsAtTheFirstByte) {
  const TemporaryFolder folder;
  writeFile(folder.file("empty.atn"), "");
  EXPECT_THAT(errorOfFile(folder.file("empty.atn")),
              testing::HasSubstr("at byte 0: the version 16 of an action file is expected"));
}

TEST(ByteSource, OfAStreamGoesOnFromItsPlace) {
  const std::string bytes = written(RandomSteps(3).set(20));
  const TemporaryFolder folder;
  writeFile(folder.file("later.atn"), "before" + bytes);
  const File stream(std::fopen(folder.file("later.atn").c_str(), "rb"));
  std::fseek(stream.get(), 6, SEEK_SET);
  FileSource source(stream.get(), "a stream");
  EXPECT_EQ(source.size(), bytes.size());
  EXPECT_EQ(source.name(), "a stream");
  EXPECT_EQ(written(readAll(source)), bytes);
}

TEST(ByteSource, OfAPipeHasNoSize) {
  const std::string bytes = written(RandomSteps(4).set(200));
  const TemporaryFolder folder;
  writeFile(folder.file("piped.atn"), bytes);
  std::FILE* pipe = popen(("cat " + folder.file("piped.atn")).c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  FileSource source(pipe, "a pipe");
  EXPECT_EQ(source.size(), std::nullopt);
  EXPECT_EQ(written(readAll(source)), bytes);
  pclose(pipe);
}

TEST(ByteSource, OfAStreamThatCannotBePositionedAtItsEndHasNoSize) {
  cookie_io_functions_t functions = {};
  functions.read = [](void*, char*, size_t) -> ssize_t { return 0; };
  functions.seek = [](void*, off64_t* offset, int origin) {
    if (origin == SEEK_END) return -1;
    *offset = 0;
    return 0;
  };
  const File stream(fopencookie(nullptr, "r", functions));
  ASSERT_EQ(std::ftell(stream.get()), 0);
  EXPECT_EQ(FileSource(stream.get(), "a stream").size(), std::nullopt);
}
