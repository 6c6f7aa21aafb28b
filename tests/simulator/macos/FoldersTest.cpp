#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "simulator/macos/Folders.h"
#include "tests/support/Process.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

std::string pathOf(const FSRef& ref) { return pathOfRef(ref).value_or("none"); }

class Folders : public testing::Test {
 protected:
  Folders() { setHomeFolder(home()); }

  fs::path home() const { return temporary_.file("home"); }

  FSRef found_ = {};

 private:
  testing_support::TemporaryFolder temporary_;
};

TEST_F(Folders, CreateThePreferencesFolderOnRequest) {
  EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, kDontCreateFolder, &found_), fnfErr);
  EXPECT_FALSE(fs::exists(home()));
  EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, kCreateFolder, &found_), noErr);
  EXPECT_TRUE(fs::is_directory(preferencesFolder(home())));
  EXPECT_EQ(pathOf(found_), preferencesFolder(home()).string());
  EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, kDontCreateFolder, &found_), noErr);
}

TEST_F(Folders, HaveNoPreferencesFolderIfItCannotBeCreated) {
  testing_support::writeFile(home().string(), "a file");
  EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, kCreateFolder, &found_), fnfErr);
  EXPECT_EQ(pathOf(found_), "none");
}

TEST_F(Folders, HaveNoOtherFolderAndNoOtherDomain) {
  constexpr FSVolumeRefNum kSystemDomain = -32766;
  constexpr OSType kDesktopFolderType = fourCharCode("desk");
  EXPECT_EQ(FSFindFolder(kSystemDomain, kPreferencesFolderType, kCreateFolder, &found_), fnfErr);
  EXPECT_EQ(FSFindFolder(kUserDomain, kDesktopFolderType, kCreateFolder, &found_), fnfErr);
  EXPECT_FALSE(fs::exists(home()));
}

TEST(FoldersWithoutHome, AreNotFound) {
  FSRef found = {};
  ASSERT_FALSE(homeFolder());
  EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, kCreateFolder, &found), fnfErr);
}

TEST_F(Folders, ReferToTheSamePathByTheSameReference) {
  const FSRef first = refOfPath("/a");
  const FSRef second = refOfPath("/b");
  EXPECT_EQ(pathOf(first), "/a");
  EXPECT_EQ(pathOf(second), "/b");
  const FSRef again = refOfPath("/a");
  EXPECT_EQ(std::memcmp(first.hidden, again.hidden, sizeof first.hidden), 0);
}

TEST_F(Folders, DoNotKnowAReferenceThatTheyDidNotMake) {
  EXPECT_EQ(pathOf(FSRef{}), "none");
  FSRef altered = refOfPath("/a");
  altered.hidden[0] ^= 1;
  EXPECT_EQ(pathOf(altered), "none") << "without the mark";
  altered = refOfPath("/a");
  altered.hidden[15] = 0xFF;
  EXPECT_EQ(pathOf(altered), "none") << "beyond the last reference";
}

TEST_F(Folders, WriteThePathOfAReferenceIfItFits) {
  const FSRef ref = refOfPath("/abc");
  UInt8 path[5] = {};
  EXPECT_NE(FSRefMakePath(&ref, path, 4), noErr);
  EXPECT_EQ(path[0], 0) << "nothing is written";
  EXPECT_EQ(FSRefMakePath(&ref, path, 5), noErr);
  EXPECT_STREQ(reinterpret_cast<const char*>(path), "/abc");
  EXPECT_EQ(FSRefMakePath(&found_, path, 5), fnfErr);
}

}  // namespace
}  // namespace simulator
