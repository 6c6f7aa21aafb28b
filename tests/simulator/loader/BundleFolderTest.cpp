#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "simulator/loader/BundleFolder.h"
#include "simulator/loader/ByteReader.h"
#include "tests/support/Process.h"

namespace simulator {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using testing_support::TemporaryFolder;
using testing_support::writeFile;

std::string errorOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const LoadError& error) {
    return error.what();
  }
  return "";
}

class PropertyListFile : public testing::Test {
 protected:
  Json read(const std::string& text) {
    writeFile(path(), text);
    return readPropertyList(path());
  }
  // The value of a list around `value`.
  Json value(const std::string& value) { return read("<plist>" + value + "</plist>"); }
  // The error without the file's name.
  std::string error(const std::string& text) {
    const std::string error = errorOf([&] { read(text); });
    EXPECT_THAT(error, StartsWith(path()));
    return error.substr(path().size());
  }
  std::string path() const { return folder_.file("Info.plist"); }

 private:
  TemporaryFolder folder_;
};

TEST_F(PropertyListFile, HoldsValuesOfEveryType) {
  EXPECT_EQ(value("<string>a &amp; &#x62;<!-- x --><![CDATA[<c>]]></string>"), "a & b<c>");
  EXPECT_EQ(value("<string/>"), "");
  EXPECT_EQ(value("<integer>-12</integer>"), -12);
  EXPECT_EQ(value("<real>2.5</real>"), 2.5);
  EXPECT_EQ(value("<true/>"), true);
  EXPECT_EQ(value("<false/>"), false);
  EXPECT_EQ(value("<data>AAEC</data>"), (Json{{"data", "AAEC"}}));
  EXPECT_EQ(value("<date>2020-01-01T00:00:00Z</date>"), (Json{{"date", "2020-01-01T00:00:00Z"}}));
  EXPECT_EQ(value("<array><true/><!-- x --><string>b</string></array>"), (Json{true, "b"}));
  EXPECT_EQ(value("<array/>"), Json::array());
}

TEST_F(PropertyListFile, HoldsKeysAndTheirValues) {
  const Json values = read(R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>one</key>
	<!-- between a key and its value -->
	<string>first</string>
	<key>two</key>
	<dict><key>inner</key><integer>2</integer></dict>
	<key>one</key>
	<string>second</string>
</dict>
</plist>)");
  EXPECT_EQ(values, (Json{{"one", "second"}, {"two", {{"inner", 2}}}}));
}

TEST_F(PropertyListFile, IsRefusedWithItsPlace) {
  EXPECT_EQ(error("<plist>\n<dict>\n<string>a</string></dict></plist>"), ":3: a <key> is missing");
  EXPECT_EQ(error("<plist>\n\n<dict><key>a</key></dict></plist>"), ":3: a has no value");
  EXPECT_EQ(error("<plist><dict>\n<key>a</key>\n<text>b</text></dict></plist>"),
            ":3: <text> is not a value of a property list");
  EXPECT_EQ(error("<plist><integer>12x</integer></plist>"), ":1: \"12x\" is not a number");
  EXPECT_EQ(error("<plist/>"), ":1: <plist> does not hold exactly one value");
  EXPECT_EQ(error("<plist><true/><true/></plist>"), ":1: <plist> does not hold exactly one value");
  EXPECT_EQ(error("<dict/>"), ":1: <plist> is missing");
  EXPECT_THAT(error("<plist>\n<dict>\n</plist>"), StartsWith(":3: "));
  EXPECT_THAT(error(""), StartsWith(":1: "));
}

TEST_F(PropertyListFile, IsRefusedIfItIsNestedTooDeeply) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "<array>";
  for (int i = 0; i < 100000; ++i) text += "</array>";
  EXPECT_EQ(error("<plist>" + text + "</plist>"), ":1: the values are nested too deeply");
}

TEST_F(PropertyListFile, IsRefusedInTheBinaryForm) {
  EXPECT_EQ(error("bplist00\xD1"),
            " is a binary property list; XML is needed (plutil -convert xml1)");
}

TEST_F(PropertyListFile, IsRefusedIfItCannotBeRead) {
  EXPECT_EQ(errorOf([&] { readPropertyList(path()); }), path() + " cannot be read");
}

class BundleFolder : public testing::Test {
 protected:
  BundleFolder() {
    std::filesystem::create_directories(path() + "/Contents/MacOS");
    std::filesystem::create_directories(path() + "/Contents/Other");
  }
  void describe(const std::string& dictionary) {
    writeFile(path() + "/Contents/Info.plist", "<plist><dict>" + dictionary + "</dict></plist>");
  }
  void addBinary(const std::string& name) { writeFile(path() + "/Contents/MacOS/" + name, "code"); }
  std::string binary() const {
    return binaryOfBundle(path()).lexically_relative(path() + "/Contents/MacOS").string();
  }
  std::string error() const {
    const std::string error = errorOf([&] { binaryOfBundle(path()); });
    EXPECT_THAT(error, StartsWith(path()));
    return error.substr(path().size());
  }
  std::string path() const { return folder_.file("Sample.plugin"); }

 private:
  TemporaryFolder folder_;
};

constexpr const char* kNamesOther = "<key>CFBundleExecutable</key><string>Other name</string>";

TEST_F(BundleFolder, IsLoadedFromTheExecutableThatItsDescriptionNames) {
  describe(kNamesOther);
  addBinary("Sample");
  addBinary("Other name");
  EXPECT_EQ(binary(), "Other name");
}

TEST_F(BundleFolder, IsLoadedFromTheFileOfItsOwnNameWithoutADescription) {
  addBinary("Sample");
  EXPECT_EQ(binary(), "Sample");
  EXPECT_EQ(binaryOfBundle(path() + "/").filename(), "Sample");
  describe("<key>CFBundleName</key><string>x</string>");
  EXPECT_EQ(binary(), "Sample");
}

TEST_F(BundleFolder, IsRefusedIfItsBinaryIsMissing) {
  EXPECT_EQ(error(),
            ": cannot be read as a bundle: neither Contents/Info.plist nor Contents/MacOS/Sample "
            "is there");
  describe(kNamesOther);
  addBinary("Sample");
  EXPECT_EQ(error(),
            ": Contents/MacOS/Other name, which Contents/Info.plist asks for, is not there");
  std::filesystem::create_directory(path() + "/Contents/MacOS/Other name");
  EXPECT_THAT(error(), HasSubstr("is not there"));
}

TEST_F(BundleFolder, IsRefusedIfTheNameLeavesTheFolder) {
  for (const char* const name : {"../Other/x", "/bin/sh", "..", ".", ""}) {
    describe("<key>CFBundleExecutable</key><string>" + std::string(name) + "</string>");
    EXPECT_EQ(error(), "/Contents/Info.plist: CFBundleExecutable is \"" + std::string(name) +
                           "\", which is not the name of a file");
  }
  describe("<key>CFBundleExecutable</key><integer>7</integer>");
  EXPECT_THAT(error(), HasSubstr("CFBundleExecutable is \"7\""));
}

}  // namespace
}  // namespace simulator
