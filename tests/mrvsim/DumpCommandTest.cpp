// Runs `mrvsim dump` as a user does.
#include <gmock/gmock.h>

#include "tests/support/Process.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using testing_support::Finished;
using testing_support::readFile;
using testing_support::writeFile;

class DumpCommand : public testing::Test {
 protected:
  DumpCommand() { writeFile(target_, "before\n"); }

  Finished dump(const std::string& json, const std::vector<std::string>& more = {}) {
    writeFile(folder_.file("descriptor.json"), json);
    std::vector<std::string> command = {MRVSIM, "dump", folder_.file("descriptor.json"), target_};
    command.insert(command.end(), more.begin(), more.end());
    return testing_support::run(command);
  }

  void expectRefused(const std::string& json, const std::string& reason,
                     const std::vector<std::string>& more = {}) {
    const Finished finished = dump(json, more);
    EXPECT_EQ(finished.status, 2) << json;
    EXPECT_THAT(finished.errors, HasSubstr(reason));
    EXPECT_EQ(finished.errors.find('\n'), finished.errors.size() - 1) << "one line";
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(readFile(target_), "before\n") << "the file is left as it was";
  }

  std::string appended() const {
    const std::string text = readFile(target_);
    EXPECT_THAT(text, StartsWith("before\n"));
    return text.substr(std::string("before\n").size());
  }

  testing_support::TemporaryFolder folder_;
  std::string target_ = folder_.file("target.txt");
};

TEST_F(DumpCommand, AppendsTheFunctionAndPrintsNothing) {
  const Finished finished = dump(R"([{"key": "Wdth", "type": "long", "value": 7}])");
  EXPECT_EQ(finished.status, 0);
  EXPECT_EQ(finished.output + finished.errors, "");
  EXPECT_THAT(appended(), StartsWith("SPErr PlayeventSet("));
  EXPECT_THAT(appended(), HasSubstr(", keyWidth, 7);\n"));
}

TEST_F(DumpCommand, TakesTheEventInEveryFormOfId) {
  EXPECT_EQ(dump("null", {"--event", "slct"}).status, 0);
  EXPECT_EQ(dump("null", {"--event", "$sampleEvent"}).status, 0);
  EXPECT_EQ(dump("null", {"--event", "$set"}).status, 0);
  EXPECT_EQ(dump("null", {"--event", "1936483188"}).status, 0);
  EXPECT_EQ(dump("null", {"--event", "0"}).status, 0);
  const std::string text = appended();
  EXPECT_THAT(text, StartsWith("SPErr PlayeventSelect("));
  EXPECT_THAT(text, HasSubstr("\nSPErr PlaysampleEvent("));
  EXPECT_THAT(text, HasSubstr("\nSPErr Playset(")) << "a string ID of three letters";
  EXPECT_THAT(text, HasSubstr("\nSPErr PlayeventSelect(")) << "the number is that of 'slct'";
  EXPECT_THAT(text, HasSubstr("\nSPErr Play'("));
}

TEST_F(DumpCommand, RefusesInvalidDescriptorsAndLeavesTheFileUnchanged) {
  expectRefused("[{", "descriptor.json:1:3: the document ends too early");
  expectRefused("", "descriptor.json:1:1: the document is empty");
  expectRefused("{}", "must be a list of items");
  expectRefused(R"([{"key": "Wdth", "type": "long"}])", "/0");
  expectRefused(R"([{"key": "Wdth", "type": "long", "value": 2147483648}])", "/0/value: ");
  expectRefused(R"([{"key": "Wdth", "type": "long", "value": 1, "more": 2}])", "/0");
  expectRefused(R"([{"key": "Width", "type": "long", "value": 1}])", "/0/key: ");
  expectRefused(R"([{"key": "Wdth", "type": "VlLs", "value": [{"type": "tdta", "value": "?"}]}])",
                "/0/value/0/value: ");
}

TEST_F(DumpCommand, RefusesAnEventThatIsNotAnId) {
  expectRefused("null", "--event select: ", {"--event", "select"});
  expectRefused("null", "--event 4294967296: ", {"--event", "4294967296"});
}

TEST_F(DumpCommand, NamesTheFileThatItCannotReadOrWrite) {
  target_ = folder_.file("missing/target.txt");
  const Finished unwritable = dump("null");
  EXPECT_EQ(unwritable.status, 2);
  EXPECT_THAT(unwritable.errors, HasSubstr("missing/target.txt: cannot be written: "));
  const Finished unreadable =
      testing_support::run({MRVSIM, "dump", folder_.file("none.json"), target_});
  EXPECT_EQ(unreadable.status, 2);
  EXPECT_THAT(unreadable.errors, HasSubstr("none.json: cannot be read: "));
}

TEST_F(DumpCommand, ShowsTheSystemLog) {
  const Finished finished = dump(R"([{"key": "null", "type": "bkmk", "value": "/no/such/file"}])");
  EXPECT_EQ(finished.status, 0);
  EXPECT_EQ(finished.errors,
            "mrvsim: syslog: Could not resolve bookmark in BookmarkToFullPath\n"
            "mrvsim: syslog: Could not convert in BookmarkToFullPath\n");
}

TEST_F(DumpCommand, DocumentsTheFormOfDescriptors) {
  const Finished finished = testing_support::run({MRVSIM, "dump", "--help"});
  EXPECT_EQ(finished.status, 0);
  for (const char* word : {"long",
                           "comp",
                           "doub",
                           "UntF",
                           "bool",
                           "enum",
                           "type",
                           "GlbC",
                           "Objc",
                           "GlbO",
                           "VlLs",
                           "obj ",
                           "alis",
                           "Pth ",
                           "bkmk",
                           "TEXT",
                           "tdta",
                           "Clss",
                           "Enmr",
                           "Idnt",
                           "indx",
                           "rele",
                           "prop",
                           "name",
                           "enumType",
                           "unit",
                           "class",
                           "base64",
                           "four characters",
                           "\"$\"",
                           "null",
                           "--event"}) {
    EXPECT_THAT(finished.output, HasSubstr(word));
  }
}

}  // namespace
