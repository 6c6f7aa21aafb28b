// Reading whole action files and their steps.
#include <gmock/gmock.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "actionfiles/ActionFileError.h"
#include "actionfiles/ActionFileReader.h"
#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/AllocationCounter.h"
#include "tests/actionfiles/RandomSteps.h"
#include "tests/support/Process.h"

using namespace actionfiles;
using namespace testing_support;

namespace {

/// Text from literals that hold zero bytes.
template <std::size_t size>
std::string raw(const char (&bytes)[size]) {
  return {bytes, size - 1};
}

/// A file, byte by byte: a set "S" of one action "A" with one step.
std::string smallFile() {
  return raw("\0\0\0\20"
             "\0\0\0\2\0S\0\0"
             "\1"
             "\0\0\0\1") +  // the set
         raw("\0\3"
             "\1"
             "\0"
             "\0\4"
             "\0\0\0\2\0A\0\0"
             "\0"
             "\0\0\0\1") +  // the action
         raw("\1"
             "\0"
             "\1"
             "\2"
             "TEXT"
             "\0\0\0\6select"
             "\0\0\0\3Nam") +       // the step
         raw("\xFF\xFF\xFF\xFF") +  // its mark
         raw("\0\0\0\1\0\0"
             "\0\0\0\0null"
             "\0\0\0\1") +  // the descriptor
         raw("\0\0\0\5using"
             "long"
             "\xFF\xFF\xFF\xFE");  // its item
}

/// The message of the error that reading throws; empty if it throws none.
std::string errorOf(const std::string& bytes) {
  MemorySource source(bytes, "FILE");
  try {
    ActionFileReader reader(source);
    while (reader.nextAction() != nullptr) {
      while (reader.nextStep() != nullptr) {
      }
    }
    return "";
  } catch (const ActionFileError& error) {
    return error.what();
  }
}

/// The error of the small file if its bytes from `offset` on are replaced by `bytes`.
std::string errorWith(std::size_t offset, const std::string& bytes) {
  return errorOf(smallFile().replace(offset, bytes.size(), bytes));
}

void expectReadAsWritten(const RecordedSet& set) {
  const std::string bytes = written(set);
  EXPECT_EQ(written(readAll(bytes)), bytes);
}

std::string nested(std::size_t levels) {
  List list;
  for (std::size_t i = 0; i < levels; ++i) {
    List outer;
    outer.values.push_back(valueOf(kList, std::move(list)));
    list = std::move(outer);
  }
  std::vector<Step> steps;
  steps.push_back(stepWith(valueOf(kList, std::move(list))));
  return written(setOf(std::move(steps)));
}

}  // namespace

TEST(ActionFileReader, ReadsTheSetItsActionsAndTheirSteps) {
  const std::string bytes = smallFile();
  MemorySource source(bytes);
  ActionFileReader reader(source);
  EXPECT_EQ(reader.set().name.utf8, "S");
  EXPECT_TRUE(reader.set().expanded);
  EXPECT_EQ(reader.set().actions, 1u);
  const ActionHead* action = reader.nextAction();
  ASSERT_NE(action, nullptr);
  EXPECT_EQ(action->functionKey, 3);
  EXPECT_TRUE(action->shift);
  EXPECT_FALSE(action->command);
  EXPECT_EQ(action->colour, 4);
  EXPECT_EQ(action->name.utf8, "A");
  EXPECT_FALSE(action->expanded);
  EXPECT_EQ(action->steps, 1u);
  const Step* step = reader.nextStep();
  ASSERT_NE(step, nullptr);
  EXPECT_TRUE(step->expanded);
  EXPECT_FALSE(step->enabled);
  EXPECT_TRUE(step->withDialog);
  EXPECT_EQ(step->dialogOptions, 2);
  EXPECT_EQ(step->event.string(), "select");
  EXPECT_EQ(step->event.code(), 0U);
  EXPECT_EQ(step->name, "Nam");
  EXPECT_EQ(step->mark, -1);
  EXPECT_EQ(step->descriptor.type.id.code(), fourCharCode("null"));
  ASSERT_EQ(step->descriptor.items.size(), 1u);
  EXPECT_EQ(step->descriptor.items[0].key.string(), "using");
  EXPECT_EQ(step->descriptor.items[0].value.type, kInteger);
  EXPECT_EQ(std::get<std::int32_t>(step->descriptor.items[0].value.content), -2);
  EXPECT_EQ(reader.nextStep(), nullptr);
  EXPECT_EQ(reader.nextAction(), nullptr);
  EXPECT_EQ(reader.offset(), bytes.size());
}

TEST(ActionFileReader, SkipsTheStepsThatAreNotAskedFor) {
  RecordedSet set = RandomSteps(5).set(40);
  const std::string bytes = written(set);
  MemorySource all(bytes);
  ActionFileReader reader(all);
  EXPECT_EQ(reader.nextStep(), nullptr) << "before the first action";
  for (const RecordedAction& action : set.actions) {
    const ActionHead* head = reader.nextAction();
    ASSERT_NE(head, nullptr);
    EXPECT_EQ(head->functionKey, action.head.functionKey);
  }
  EXPECT_EQ(reader.nextAction(), nullptr);
}

TEST(ActionFileReader, ReadsAStepWithoutDescriptorAndAnEventThatIsACode) {
  std::vector<Step> steps(2);
  steps[0].event = codeId("Stop");
  steps[1] = stepOf(codeId("\0\x01\xFF'"), "Last", {});
  const RecordedSet set = readAll(written(setOf(std::move(steps))));
  const std::vector<Step>& read = set.actions.at(0).steps;
  EXPECT_EQ(read.at(0).event.code(), fourCharCode("Stop"));
  EXPECT_EQ(read[0].event.string(), "");
  EXPECT_EQ(read[0].name, "");
  EXPECT_EQ(read[0].mark, 0);
  EXPECT_EQ(read.at(1).event.code(), 0x0001FF27u);
  EXPECT_EQ(read[1].name, "Last");
}

TEST(ActionFileReader, ReadsACommandsNameInMacRoman) {
  std::vector<Step> steps(1);
  steps[0].event = codeId("Stop");
  steps[0].name = "Gr\u00F6\u00DFe \u2026";
  const std::string bytes = written(setOf(std::move(steps)));
  EXPECT_THAT(bytes, testing::HasSubstr("Gr\x9A\xA7"
                                        "e \xC9"));
  EXPECT_EQ(readAll(bytes).actions.at(0).steps.at(0).name, "Gr\u00F6\u00DFe \u2026");
}

TEST(ActionFileReader, ReadsEveryItemTypeAndFormAsWritten) {
  std::vector<Step> steps;
  for (Value& value : everyType()) steps.push_back(stepWith(std::move(value)));
  std::vector<Item> items;
  for (Value& value : everyType()) items.push_back({stringId("key"), std::move(value)});
  steps.push_back(stepOf(codeId("setd"), "All at once", std::move(items)));
  List list;
  list.values = everyType();
  steps.push_back(stepWith(valueOf(kList, std::move(list))));
  expectReadAsWritten(setOf(std::move(steps)));
}

TEST(ActionFileReader, ReadsStringIDsOfAnyLength) {
  std::vector<Step> steps;
  for (const std::size_t length :
       {1u, 2u, 3u, 4u, 5u, 15u, 16u, 255u, 256u, 65535u, 65536u, 200000u}) {
    steps.push_back(stepOf(stringId(std::string(length, 'x')), "", {}));
    steps.back().descriptor.items.push_back(
        {stringId(std::string(length, 'k')), valueOf(kBoolean, true)});
  }
  steps.push_back(stepOf(stringId("with blanks \xC3\xA4 and \x01"), "", {}));
  expectReadAsWritten(setOf(std::move(steps)));
}

TEST(ActionFileReader, ReadsNamesThatAreEmptyLongOrNotAscii) {
  RecordedSet set = setOf({});
  set.head.name = textOf(std::u16string(100000, u'\u4E16'));
  for (const std::u16string_view name : {u"", u"\u00DCbergang", u"\U0001F3A8 Farbe", u"\"\r\n\\"}) {
    set.actions.push_back({{}, {}});
    set.actions.back().head.name = textOf(name);
  }
  set.actions.push_back({});
  expectReadAsWritten(set);
  const RecordedSet read = readAll(written(set));
  EXPECT_EQ(read.actions.at(1).head.name.utf8, "");
  EXPECT_EQ(read.actions.at(2).head.name.utf8, "\u00DCbergang");
  EXPECT_EQ(read.actions.at(3).head.name.utf8, "\U0001F3A8 Farbe");
  EXPECT_EQ(read.actions.at(4).head.name.utf8, "\"\r\n\\");
  EXPECT_FALSE(read.actions.at(5).head.name.terminated);
}

TEST(ActionFileReader, KeepsTheUnitsOfATextThatUtf8CannotEncode) {
  std::vector<Step> steps;
  steps.push_back(stepWith(boxed(kText, textOf({u"a\xD800z", 3}))));
  const RecordedSet set = readAll(written(setOf(std::move(steps))));
  const auto& text =
      *std::get<Boxed<Text>>(set.actions.at(0).steps.at(0).descriptor.items.at(0).value.content);
  EXPECT_EQ(text.utf8, "a\uFFFDz");
  ASSERT_NE(text.units, nullptr);
  EXPECT_EQ(*text.units, std::u16string(u"a\xD800z", 3));
}

TEST(ActionFileReader, ReadsFiveHundredRandomStepsAsWritten) {
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    SCOPED_TRACE(seed);
    expectReadAsWritten(RandomSteps(seed).set(500));
  }
}

TEST(ActionFileReader, ReadsAFileAsItReadsMemory) {
  const std::string bytes = written(RandomSteps(77).set(500));
  ASSERT_GT(bytes.size(), 200000u) << "several pieces";
  const TemporaryFolder folder;
  const std::string file = folder.file("random.atn");
  writeFile(file, bytes);
  FileSource source(file);
  EXPECT_EQ(source.size(), bytes.size());
  EXPECT_EQ(written(readAll(source)), bytes);
}

TEST(ActionFileReader, NamesTheVersionThatItDoesNotRead) {
  EXPECT_EQ(errorWith(0, raw("\0\0\0\14")),
            "FILE: at byte 0: the version 16 of an action file is expected, found 12, which is "
            "older and has another layout");
  EXPECT_EQ(errorWith(0, raw("\0\0\0\21")),
            "FILE: at byte 0: the version 16 of an action file is expected, found 17");
  EXPECT_EQ(errorOf(""),
            "FILE: at byte 0: the version 16 of an action file is expected, found the end of the "
            "file");
}

TEST(ActionFileReader, NamesWhatItExpectedAndWhereItLooked) {
  const std::size_t item = smallFile().find("long");
  EXPECT_EQ(errorWith(item, "abcd"),
            "FILE: at byte " + std::to_string(item) + ": an item type is expected, found 'abcd'");
  EXPECT_EQ(errorWith(item, raw("\0'\x7F\xFF")),
            "FILE: at byte " + std::to_string(item) +
                ": an item type is expected, found '\\x00'\\x7F\\xFF'");
  const std::size_t event = smallFile().find("TEXT");
  EXPECT_EQ(errorWith(event, "text"),
            "FILE: at byte " + std::to_string(event) +
                ": an event ('TEXT' or 'long') is expected, found 'text'");
  EXPECT_EQ(errorOf(smallFile() + "x"),
            "FILE: at byte " + std::to_string(smallFile().size()) +
                ": the end of the file is expected, found further bytes");
}

TEST(ActionFileReader, RefusesAnUnknownFormAndAColumnOfAnotherType) {
  std::vector<Step> steps;
  steps.push_back(stepWith(std::move(everyType()[16])));
  std::string bytes = written(setOf(std::move(steps)));
  const std::size_t form = bytes.find("prop");
  EXPECT_EQ(errorOf(bytes.replace(form, 4, "Prop")),
            "FILE: at byte " + std::to_string(form) +
                ": a form of a reference is expected, found 'Prop'");
  steps.clear();
  steps.push_back(stepWith(std::move(everyType().back())));
  bytes = written(setOf(std::move(steps)));
  const std::size_t column = bytes.find("UnFl");
  EXPECT_EQ(
      errorOf(bytes.replace(column, 4, "UntF")),
      "FILE: at byte " + std::to_string(column) + ": the type 'UnFl' is expected, found 'UntF'");
}

TEST(ActionFileReader, RefusesALengthThatTheFileCannotHold) {
  const std::size_t length = smallFile().find("select") - 4;
  const std::size_t left = smallFile().size() - length - 4;
  EXPECT_EQ(errorWith(length, raw("\xFF\xFF\xFF\xFF")),
            "FILE: at byte " + std::to_string(length) +
                ": the length of an event's string ID of at most " + std::to_string(left) +
                " is expected, found 4294967295");
  EXPECT_EQ(errorWith(13, raw("\0\1\0\0")), "FILE: at byte 13: a number of actions of at most " +
                                                std::to_string((smallFile().size() - 17) / 15) +
                                                " is expected, found 65536");
}

TEST(ActionFileReader, ReadsNestingUpToItsLimitAndRefusesDeeperOnes) {
  // The descriptor of the step and the list itself are two levels.
  EXPECT_EQ(errorOf(nested(kDeepestNesting - 2)), "");
  EXPECT_THAT(errorOf(nested(kDeepestNesting - 1)),
              testing::EndsWith("nesting of at most 256 levels is expected, found one more"));
  std::string endless = nested(10);
  const std::size_t first = endless.find("VlLs");
  endless.resize(first);
  for (int i = 0; i < 1000000; ++i) endless += raw("VlLs\0\0\0\1");
  EXPECT_THAT(errorOf(endless), testing::HasSubstr("nesting of at most 256 levels"));
}

TEST(ActionFileReader, HoldsOneStepInMemory) {
  std::vector<Step> steps;
  for (int i = 0; i < 200; ++i) {
    steps.push_back(stepWith(valueOf(kRawData, Data{std::string(50000, 'd')})));
  }
  const TemporaryFolder folder;
  writeFile(folder.file("long.atn"), written(setOf(std::move(steps))));
  FileSource source(folder.file("long.atn"));
  const AllocationCounter counter;
  ActionFileReader reader(source);
  int count = 0;
  while (reader.nextAction() != nullptr) {
    while (reader.nextStep() != nullptr) ++count;
  }
  EXPECT_EQ(count, 200);
  EXPECT_LT(counter.peak(), 500000u);
}
