#include <cstring>
#include <fstream>

#include "codegen/PathConversion.h"
#include "hostutil/CFObject.h"
#include "simulator/base/Faults.h"
#include "simulator/macos/CFObjects.h"
#include "simulator/macos/Folders.h"
#include "suites/BasicSuite.h"
#include "tests/codegen/GeneratorFixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kNotResolved[] = "Could not resolve bookmark in BookmarkToFullPath";
constexpr char kNotConverted[] = "Could not convert in BookmarkToFullPath";
constexpr char kNoURL[] = "Could not create url bookmark in FullPathToBookmark";

/// The folder has a file "picture.psd". All Core Foundation objects must be released.
class PathConversion : public GeneratorFixture {
 protected:
  PathConversion() { std::ofstream(picture()) << "8BPS"; }
  ~PathConversion() override { EXPECT_EQ(simulator::theCFObjects().live(), objectsBefore_); }

  std::string picture() const { return (folder() / "picture.psd").string(); }

  static std::string pathOf(AliasHandle alias) {
    char path[512] = "old";
    AliasToFullPath(alias, path, sizeof path);
    return path;
  }

  static std::string pathOf(CFDataRef bookmark) {
    char path[512] = "old";
    BookmarkToFullPath(bookmark, path, sizeof path);
    return path;
  }

  static CFObject<CFDataRef> bookmarkOf(const std::string& path) {
    CFDataRef bookmark = nullptr;
    FullPathToBookmark(path.c_str(), bookmark);
    return CFObject<CFDataRef>(bookmark);
  }

 private:
  std::size_t objectsBefore_ = simulator::theCFObjects().live();
};

class Alias {
 public:
  explicit Alias(const std::string& path) { FullPathToAlias(path.c_str(), handle); }
  ~Alias() {
    if (handle != nullptr) sPSHandle->DisposeRegularHandle(reinterpret_cast<Handle>(handle));
  }

  AliasHandle handle = reinterpret_cast<AliasHandle>(1);  // must always be overwritten
};

TEST_F(PathConversion, ConvertsAPathToAnAliasAndBack) {
  const Alias alias(picture());
  ASSERT_NE(alias.handle, nullptr);
  EXPECT_EQ(pathOf(alias.handle), picture());
}

TEST_F(PathConversion, LeavesThePathEmptyIfAnAliasCannotBeResolved) {
  const Alias alias(picture());
  std::filesystem::remove(picture());
  EXPECT_EQ(pathOf(alias.handle), "");
  EXPECT_EQ(pathOf(AliasHandle{}), "");
  EXPECT_THAT(systemLog(), IsEmpty()) << "aliases fail silently";
}

TEST_F(PathConversion, LeavesThePathEmptyIfThePathOfAnAliasDoesNotFit) {
  const Alias alias(picture());
  std::string path(picture().size(), 'x');
  AliasToFullPath(alias.handle, path.data(), picture().size());
  EXPECT_EQ(path[0], '\0');
  AliasToFullPath(alias.handle, path.data(), picture().size() + 1);
  EXPECT_EQ(path, picture());
}

TEST_F(PathConversion, DoesNothingWithoutABuffer) {
  const Alias alias(picture());
  AliasToFullPath(alias.handle, nullptr, 512);
  BookmarkToFullPath(nullptr, nullptr, 512);
  EXPECT_THAT(systemLog(), IsEmpty());
}

TEST_F(PathConversion, SetsTheAliasToNullIfTheHostMakesNone) {
  simulator::theFaults().add({"AliasSuite.MacNewAliasFromCString", -1731, 0, 1});
  EXPECT_EQ(Alias(picture()).handle, nullptr);
}

TEST_F(PathConversion, SetsTheAliasToNullAndThrowsIfTheSuiteIsMissing) {
  auto alias = reinterpret_cast<AliasHandle>(1);
  simulator::theFaults().add({"Basic.AcquireSuite", kSPSuiteNotFoundError, 0, 1});
  EXPECT_THROW(FullPathToAlias("/tmp", alias), std::uint32_t);
  EXPECT_EQ(alias, nullptr);
}

TEST_F(PathConversion, MakesAHandleOfAnAlias) {
  auto handle = reinterpret_cast<Handle>(1);
  FullPathToAlias(picture().c_str(), handle);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(pathOf(reinterpret_cast<AliasHandle>(handle)), picture());
  sPSHandle->DisposeRegularHandle(handle);
}

TEST_F(PathConversion, SetsTheHandleToNullIfThereIsNoAlias) {
  auto handle = reinterpret_cast<Handle>(1);
  FullPathToAlias((picture() + ".none").c_str(), handle);
  EXPECT_EQ(handle, nullptr);
  handle = reinterpret_cast<Handle>(1);
  simulator::theFaults().add({"Basic.AcquireSuite", kSPSuiteNotFoundError, 0, 1});
  PIUSuitesRelease();
  EXPECT_THROW(FullPathToAlias("/tmp", handle), std::uint32_t);
  EXPECT_EQ(handle, nullptr);
}

TEST_F(PathConversion, ConvertsAPathToABookmarkAndBack) {
  EXPECT_EQ(pathOf(bookmarkOf(picture()).get()), picture());
  EXPECT_THAT(systemLog(), IsEmpty());
}

TEST_F(PathConversion, LogsTwoLinesAndLeavesThePathEmptyIfABookmarkCannotBeResolved) {
  const auto bookmark = bookmarkOf(picture());
  std::filesystem::remove(picture());
  EXPECT_EQ(pathOf(bookmark.get()), "");
  EXPECT_THAT(systemLog(), ElementsAre(kNotResolved, kNotConverted));
}

TEST_F(PathConversion, LogsTwoLinesForDataThatIsNotABookmark) {
  const UInt8 bytes[] = {'n', 'o', 'n', 'e'};
  const CFObject<CFDataRef> data(CFDataCreate(kCFAllocatorDefault, bytes, sizeof bytes));
  EXPECT_EQ(pathOf(data.get()), "");
  EXPECT_EQ(pathOf(CFDataRef{}), "");
  EXPECT_THAT(systemLog(), ElementsAre(kNotResolved, kNotConverted, kNotResolved, kNotConverted));
}

TEST_F(PathConversion, LogsOneLineIfThePathOfABookmarkDoesNotFit) {
  char path[8] = "old";
  BookmarkToFullPath(bookmarkOf(picture()).get(), path, sizeof path);
  EXPECT_STREQ(path, "");
  EXPECT_THAT(systemLog(), ElementsAre(kNotConverted));
}

TEST_F(PathConversion, LogsOneLineIfABookmarkLeavesNoRoomForTheTerminator) {
  const auto bookmark = bookmarkOf(picture());
  std::string path(picture().size(), 'x');
  BookmarkToFullPath(bookmark.get(), path.data(), path.size());
  EXPECT_EQ(path[0], '\0');
  EXPECT_THAT(systemLog(), ElementsAre(kNotConverted));
  path.push_back('x');
  BookmarkToFullPath(bookmark.get(), path.data(), path.size());
  EXPECT_EQ(path.c_str(), picture());
}

TEST_F(PathConversion, TakesEveryBufferSize) {
  const Alias alias(picture());
  char path[512];
  AliasToFullPath(alias.handle, path, (std::size_t{1} << 32) + 1);
  EXPECT_EQ(path, picture());
}

TEST_F(PathConversion, ConvertsRelativePathsAndDropsSlashesAtTheEnd) {
  std::filesystem::current_path(folder());
  EXPECT_EQ(pathOf(bookmarkOf("./picture.psd").get()), picture());
  EXPECT_EQ(pathOf(bookmarkOf(picture() + "//").get()), picture());
}

TEST_F(PathConversion, LogsAnInvalidURLAndMakesNoBookmarkForAnEmptyPath) {
  CFDataRef bookmark = reinterpret_cast<CFDataRef>(1);
  FullPathToBookmark("", bookmark);
  EXPECT_EQ(bookmark, nullptr);
  EXPECT_THAT(systemLog(), ElementsAre(kNoURL));
}

TEST_F(PathConversion, MakesNoBookmarkForAMissingFile) {
  EXPECT_FALSE(bookmarkOf(picture() + ".none"));
  EXPECT_THAT(systemLog(), IsEmpty()) << "the URL is fine";
}

class PathConversionDesktop : public PathConversion {
 protected:
  PathConversionDesktop() { simulator::setHomeFolder("/Users/h\u00E9l"); }

  static constexpr char kDesktop[] = "/Users/h\u00E9l/Desktop/";
  static constexpr std::int32_t kFitting = sizeof kDesktop;
};

TEST_F(PathConversionDesktop, EndsWithASlash) {
  char path[512];
  EXPECT_EQ(GetFullPathToDesktop(path, sizeof path), 0);
  EXPECT_STREQ(path, kDesktop);
}

TEST_F(PathConversionDesktop, RefusesANullBufferAndSizesBelowOne) {
  char path[] = "old";
  EXPECT_EQ(GetFullPathToDesktop(nullptr, 512), 0x5061726D);
  EXPECT_EQ(GetFullPathToDesktop(path, 0), 0x5061726D);
  EXPECT_EQ(GetFullPathToDesktop(path, -1), 0x5061726D);
  EXPECT_STREQ(path, "old");
}

TEST_F(PathConversionDesktop, IsCutAndTerminatedInEveryBufferThatIsTooSmall) {
  for (std::int32_t size = 1; size < kFitting; ++size) {
    std::string path(static_cast<std::size_t>(size) + 8, 'x');
    EXPECT_EQ(GetFullPathToDesktop(path.data(), size), 0x5061726D) << size;
    EXPECT_EQ(path, std::string(kDesktop, static_cast<std::size_t>(size) - 1) + '\0' +
                        std::string(8, 'x'));
  }
}

TEST_F(PathConversionDesktop, ExactlyFitsABufferForPathSlashAndTerminator) {
  char path[kFitting];
  EXPECT_EQ(GetFullPathToDesktop(path, kFitting), 0);
  EXPECT_STREQ(path, kDesktop);
}

TEST(GetFullPathToDesktop, ReturnsTheParameterErrorIfTheSystemHasNoDesktopFolder) {
  ASSERT_FALSE(simulator::homeFolder());
  char path[] = "old";
  EXPECT_EQ(GetFullPathToDesktop(path, sizeof path), 0x5061726D);
  EXPECT_STREQ(path, "");
}

TEST_F(PathConversion, WritesThePathsOfAliasesAndBookmarksInDescriptors) {
  const auto desc = descriptor(R"([{"key": "null", "type": "alis", "value": ")" + picture() +
                               R"("}, {"key": "T   ", "type": "bkmk", "value": ")" + picture() +
                               R"("}, {"key": "Nm  ", "type": "Pth ", "value": "/none"}])");
  const std::string text = numbered(walked(desc));
  const std::string check = "     if (error) goto returnError;\n\n";
  EXPECT_THAT(text,
              testing::EndsWith(
                  "     // Move this to the top of the routine!\n"
                  "     Handle aliasValue = NULL;\n"
                  "     FullPathToAlias(\"" +
                  picture() +
                  "\", aliasValue);\n"
                  "     error = sPSActionDescriptor->PutAlias(desc<1>, keyNull, aliasValue);\n" +
                  check +
                  "     // Move this to the top of the routine!\n"
                  "     CFDataRef bookmarkValue = NULL;\n"
                  "     FullPathToBookmark(\"" +
                  picture() +
                  "\", bookmarkValue);\n"
                  "     error = sPSActionDescriptor->PutBookmark(desc<1>, keyTo, "
                  "bookmarkValue);\n" +
                  check +
                  "     // Move this to the top of the routine!\n"
                  "     Handle aliasValue = NULL;\n"
                  "     FullPathToAlias(\"\", aliasValue);\n"
                  "     error = sPSActionDescriptor->PutAlias(desc<1>, keyName, aliasValue);\n" +
                  check));
}

TEST_F(PathConversion, WritesAndReleasesEachOfTwoAliasesInOneDescriptor) {
  const std::string other = (folder() / "other.psd").string();
  std::ofstream{other};
  const auto desc =
      descriptor(R"([{"key": "null", "type": "alis", "value": ")" + picture() +
                 R"("}, {"key": "T   ", "type": "alis", "value": ")" + other + R"("}])");
  const auto statements = [](const std::string& path, const std::string& key) {
    return "     // Move this to the top of the routine!\n"
           "     Handle aliasValue = NULL;\n"
           "     FullPathToAlias(\"" +
           path +
           "\", aliasValue);\n"
           "     error = sPSActionDescriptor->PutAlias(desc<1>, " +
           key +
           ", aliasValue);\n"
           "     if (error) goto returnError;\n\n";
  };
  const std::string text = numbered(dumped(0x73657464, desc));
  EXPECT_THAT(text,
              testing::HasSubstr(statements(picture(), "keyNull") + statements(other, "keyTo")));
  EXPECT_THAT(text,
              testing::HasSubstr(
                  "     if (desc<1> != NULL) sPSActionDescriptor->Free(desc<1>);\n"
                  "     if (aliasValue != NULL) sPSHandle->DisposeRegularHandle(aliasValue);\n"
                  "     if (aliasValue != NULL) sPSHandle->DisposeRegularHandle(aliasValue);\n"
                  "     return error;\n"));
}

TEST_F(PathConversion, MakesTheGeneratedCodeReleaseAliasesAndBookmarks) {
  const auto elements = R"([{"key": "null", "type": "VlLs", "value": [
      {"type": "bkmk", "value": "/none"}, {"type": "alis", "value": "/none"},
      {"type": "alis", "value": "/none"}]}])";
  EXPECT_THAT(numbered(dumped(0x73657464, descriptor(elements))),
              testing::HasSubstr(
                  "     if (list<2> != NULL) sPSActionList->Free(list<2>);\n"
                  "     if (bookmarkValue != NULL) CFRelease(bookmarkValue);\n"
                  "     if (aliasValue != NULL) sPSHandle->DisposeRegularHandle(aliasValue);\n"
                  "     if (aliasValue != NULL) sPSHandle->DisposeRegularHandle(aliasValue);\n"
                  "     return error;\n"));
  EXPECT_THAT(systemLog(), ElementsAre(kNotResolved, kNotConverted));
}

TEST_F(PathConversion, DoesNotReadAnAliasIfTheHandleSuiteIsMissing) {
  const auto desc = descriptor(R"([{"key": "null", "type": "alis", "value": "/none"}])");
  simulator::theFaults().add({"Basic.AcquireSuite", kSPSuiteNotFoundError, 4, 1});
  EXPECT_THAT(walked(desc),
              testing::EndsWith("     ERROR DumpInfoFromDescriptor type: 'alis', key: keyNull, "
                                "entry: 0\n"));
}

TEST_F(PathConversion, ReturnsNulloptIfThePathOfAnAliasCannotBeConverted) {
  const Alias alias(picture());
  EXPECT_EQ(pathInAlias(alias.handle), picture());
  simulator::theFaults().add({"Mac.CFStringGetCString", 0});
  EXPECT_EQ(pathInAlias(alias.handle), std::nullopt);
}

}  // namespace
