#include <HostTerms.h>

#include <sstream>
#include <string>
#include <vector>

#include "codegen/Literals.h"
#include "codegen/ReadyFile.h"
#include "simulator/base/Faults.h"
#include "tests/codegen/GeneratorFixture.h"
#include "tests/codegen/MemoryStream.h"
#include "tests/support/AlteredSuite.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class Ready : public GeneratorFixture {
 protected:
  /// The text of a file with one step, from the step's comment on.
  static std::string stepText(PIActionDescriptor descriptor, std::uint32_t event = kEventSet) {
    MemoryStream stream;
    ReadyFile file(stream.file());
    file.beginAction("S", "A", 1);
    file.addStep({"Name", 1, true}, event, descriptor);
    file.finish();
    const std::string text = stream.text();
    return text.substr(text.find("\n\n", text.find("#pragma")) + 2);
  }

  /// The statements for a descriptor with one item, after the one that makes the descriptor.
  std::string itemText(const std::string& fields) {
    const std::string text = stepText(descriptor("[{" + fields + "}]"));
    const std::string make = "  error = sPSActionDescriptor->Make(desc[0].out());\n" + kCheck;
    const std::size_t begin = text.find(make) + make.size();
    return text.substr(begin, text.find("  ActionDescriptor result;") - begin);
  }

  /// The lines of the text but the checks of errors.
  std::vector<std::string> linesOf(std::string text) const {
    for (std::size_t at; (at = text.find(kCheck)) != std::string::npos;)
      text.erase(at, kCheck.size());
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  const std::string kCheck = "  if (error != 0) return error;\n";
};

TEST_F(Ready, WritesAFunctionForAStepAndTheTables) {
  EXPECT_EQ(stepText(descriptor(R"([{"key": "$myKey", "type": "Objc", "class": "Lyr ", "value":
      [{"key": "Wdth", "type": "UntF", "unit": "#Pxl", "value": 2.5}]}])")),
            R"(static RuntimeID string_myKey("myKey");
// Set "S", action "A", step 1 "Name"
static int play1_1_Name() {
  int error = lookUp({&string_myKey});
  if (error != 0) return error;
  ActionDescriptor desc[2];
  error = sPSActionDescriptor->Make(desc[0].out());
  if (error != 0) return error;
  error = sPSActionDescriptor->Make(desc[1].out());
  if (error != 0) return error;
  error = sPSActionDescriptor->PutUnitFloat(desc[1].get(), 0x57647468 /* keyWidth 'Wdth' */, 0x2350786C /* unitPixels '#Pxl' */, 2.5);
  if (error != 0) return error;
  error = sPSActionDescriptor->PutObject(desc[0].get(), string_myKey, 0x4C797220 /* classLayer 'Lyr ' */, desc[1].get());
  if (error != 0) return error;
  ActionDescriptor result;
  return sPSActionControl->Play(result.out(), 0x73657464 /* eventSet 'setd' */, desc[0].get(), plugInDialogSilent);
}

// Every step: its set, its action, its name, its function, whether it is enabled, whether it is
// complete.
static const RecordedStep kRecordedSteps[] = {
    {"S", "A", "Name", play1_1_Name, true, true},
    {nullptr, nullptr, nullptr, nullptr, false, false},
};

const RecordedAction kRecordedActions[] = {
    {"S", "A", 1},
    {nullptr, nullptr, 0},
};

int PlayAction(const char* setName, const char* actionName) {
  return playRecordedAction(kRecordedActions, kRecordedSteps, setName, actionName);
}
)");
}

TEST_F(Ready, WritesEachKindOfValueAsALiteral) {
  const auto put = [this](const std::string& fields) {
    const std::string text = itemText("\"key\": \"Wdth\", " + fields);
    const std::string place = "desc[0].get(), 0x57647468 /* keyWidth 'Wdth' */, ";
    const std::string begin = "  error = sPSActionDescriptor->";
    EXPECT_THAT(text, testing::StartsWith(begin));
    EXPECT_THAT(text, testing::EndsWith(");\n" + kCheck));
    EXPECT_THAT(text, HasSubstr(place));
    const std::size_t at = text.find(place);
    const std::size_t end = text.size() - kCheck.size() - 3;
    return text.substr(begin.size(), at - begin.size()) +
           text.substr(at + place.size(), end - at - place.size());
  };
  EXPECT_EQ(put(R"("type": "long", "value": -3)"), "PutInteger(-3");
  EXPECT_EQ(put(R"("type": "comp", "value": 4294967296)"), "PutInteger64(4294967296LL");
  EXPECT_EQ(put(R"("type": "doub", "value": 0.5)"), "PutFloat(0.5");
  EXPECT_EQ(put(R"("type": "UntF", "unit": "#Pxl", "value": 2.5)"),
            "PutUnitFloat(0x2350786C /* unitPixels '#Pxl' */, 2.5");
  EXPECT_EQ(put(R"("type": "bool", "value": true)"), "PutBoolean(true");
  EXPECT_EQ(put(R"("type": "bool", "value": false)"), "PutBoolean(false");
  EXPECT_EQ(put(R"("type": "tdta", "value": "AP8=")"), R"(PutData(2, "\000\377")");
}

TEST_F(Ready, MarksAStepAsIncompleteIfTheHostDoesNotCountItsItems) {
  simulator::theFaults().add({"ActionDescriptor.GetCount", -1});
  EXPECT_THAT(stepText(descriptor(R"([{"key": "Wdth", "type": "long", "value": 1}])")),
              HasSubstr("// Incomplete: the host does not report the number of items.\n"));
}

TEST_F(Ready, PlaysAStepWithoutADescriptor) {
  const std::uint32_t event = simulator::theHost().typeIds().idOf("my event!");
  EXPECT_THAT(stepText(nullptr, event), HasSubstr(R"(static int play1_1_Name() {
  int error = lookUp({&string_my_event});
  if (error != 0) return error;
  ActionDescriptor result;
  return sPSActionControl->Play(result.out(), string_my_event, nullptr, plugInDialogSilent);
})"));
  EXPECT_THAT(stepText(nullptr), HasSubstr("play1_1_Name() {\n  ActionDescriptor result;\n"))
      << "no variable that is not used";
}

TEST_F(Ready, GivesEachStringAVariableOfItsOwn) {
  auto& ids = simulator::theHost().typeIds();
  for (const char* string : {"a b", "a-b", "\u00E9"}) ids.idOf(string);
  const std::string text = stepText(descriptor(R"([{"key": "$a b", "type": "bool", "value": true},
      {"key": "$a-b", "type": "bool", "value": true}, {"key": "$é", "type": "bool", "value": true},
      {"key": "Wdth", "type": "type", "value": "$a b"}])"));
  EXPECT_THAT(text, HasSubstr("RuntimeID string_a_b(\"a b\");\n"
                              "static RuntimeID string_a_b_2(\"a-b\");\n"
                              "static RuntimeID string_(\"\u00E9\");\n"));
  EXPECT_THAT(text, HasSubstr("/* keyWidth 'Wdth' */, string_a_b);\n"));
}

TEST_F(Ready, UsesOneVariableForTheContainersOfALevel) {
  const std::string text = stepText(descriptor(R"([{"key": "Wdth", "type": "VlLs", "value":
      [{"type": "Objc", "class": "Lyr ", "value": []}, {"type": "GlbO", "class": "Lyr ", "value": []},
       {"type": "VlLs", "value": []}]}])"));
  EXPECT_THAT(text, HasSubstr("  ActionDescriptor desc[2];\n  ActionList list[2];\n"));
  EXPECT_THAT(text, HasSubstr("PutObject(list[0].get(), 0x4C797220 /* classLayer 'Lyr ' */, "
                              "desc[1].get());"));
  EXPECT_THAT(text, HasSubstr("PutGlobalObject(list[0].get(), 0x4C797220 /* classLayer 'Lyr ' */, "
                              "desc[1].get());"));
  EXPECT_THAT(text, HasSubstr("PutList(list[0].get(), list[1].get());"));
}

TEST_F(Ready, MarksAStepWithAnUnknownTypeAsIncomplete) {
  const std::string text = stepText(descriptor(
      R"([{"key": "Wdth", "type": "long", "value": 1}, {"key": "Hght", "type": "ObAr"}])"));
  EXPECT_THAT(
      text,
      HasSubstr("  // Incomplete: item 1, 0x48676874 /* keyHeight 'Hght' */, of the type 'ObAr'.\n"
                "  // Played as it is, the step could do something else.\n"
                "  return errPlugInHostInsufficient;\n}\n"));
  EXPECT_THAT(text, HasSubstr("PutInteger(")) << "the rest is there to be completed";
  EXPECT_THAT(text, HasSubstr("play1_1_Name, true, false},  // incomplete\n"));
}

TEST_F(Ready, MarksAStepAsIncompleteIfTheHostDoesNotReturnAPart) {
  const std::string json = R"([{"key": "Wdth", "type": "Objc", "class": "Lyr ", "value":
      [{"key": "Wdth", "type": "VlLs", "value": [{"type": "TEXT", "value": "t"}]},
       {"key": "Hght", "type": "tdta", "value": "AA=="}]},
      {"key": "null", "type": "obj ", "value": [{"form": "name", "class": "Lyr ", "value": "n"},
       {"form": "prop", "class": "Lyr ", "key": "Wdth"}]}])";
  for (int call = 0;; ++call) {
    simulator::theFaults().clear();
    simulator::theFaults().add({"*", -1, static_cast<std::uint64_t>(call)});
    const std::string text = stepText(descriptor(json));
    const std::string failed = simulator::theFaults().lastFired();
    if (failed.empty()) {
      EXPECT_GT(call, 30);
      EXPECT_THAT(text, Not(HasSubstr("Incomplete")));
      return;
    }
    // Releases that fail, names that the host does not have, and the end of a reference are no
    // parts.
    const bool isPart =
        failed.find("Get") != std::string::npos && !failed.ends_with("GetContainer");
    if (isPart) {
      EXPECT_THAT(text, HasSubstr("// Incomplete: ")) << failed << " " << call;
    }
    EXPECT_THAT(text, HasSubstr("\nint PlayAction(")) << failed << " " << call;
  }
}

TEST_F(Ready, MarksAStepAsIncompleteIfAStringDoesNotLeadBackToItsNumber) {
  const std::uint32_t id = simulator::theHost().typeIds().idOf({"a\0b", 3});
  auto content = std::make_shared<simulator::Container>();
  content->put(id, {kTypeBoolean, true});
  EXPECT_THAT(stepText(simulator::theHost().makeDescriptor(content)),
              HasSubstr("// Incomplete: the host's string ID "));
}

TEST_F(Ready, WritesFilesByTheirPathsWhetherTheyExistOrNot) {
  const std::string check = kCheck;
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "alis", "value": "/no/such/\u00e9")"),
            "  error = aliasOfPath(\"/no/such/\u00E9\", alias);\n" + check +
                "  error = sPSActionDescriptor->PutAlias(desc[0].get(), 0x57647468 /* keyWidth "
                "'Wdth' */, alias.get());\n" +
                check);
  EXPECT_THAT(itemText(R"("key": "Wdth", "type": "Pth ", "value": "/no")"),
              HasSubstr("aliasOfPath(\"/no\", alias)"));
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "bkmk", "value": "/no")"),
            "  error = bookmarkOfPath(\"/no\", bookmark);\n" + check +
                "  error = sPSActionDescriptor->PutBookmark(desc[0].get(), 0x57647468 /* keyWidth "
                "'Wdth' */, bookmark.get());\n" +
                check);
}

TEST_F(Ready, WritesFilesByTheirBytesIfTheyHoldNoPath) {
  auto content = std::make_shared<simulator::Container>();
  content->put(kKeyName, {kTypeAlias, simulator::FilePath{"name", std::string("\0\0rec", 5)}});
  content->put(kKeyTo, {kTypeBookmark, simulator::FilePath{"", std::string("book\xFF", 5)}});
  const std::string text = stepText(simulator::theHost().makeDescriptor(content));
  EXPECT_THAT(text, HasSubstr(R"(aliasOfBytes("\000\000rec", 5, alias);)"));
  EXPECT_THAT(text, HasSubstr(R"(bookmarkOfBytes("book\377", 5, bookmark);)"));
}

TEST_F(Ready, WritesAnAliasByItsBytesIfThePlatformDoesNotReturnItsPath) {
  simulator::theFaults().add({"Mac.FSCopyAliasInfo", -43});
  EXPECT_THAT(itemText(R"("key": "Wdth", "type": "alis", "value": "/no")"),
              HasSubstr("error = aliasOfBytes(\""));
  EXPECT_EQ(simulator::theFaults().fired(), 1U);
}

TEST_F(Ready, WritesTextThatACStringCannotHoldByItsUnits) {
  auto content = std::make_shared<simulator::Container>();
  content->put(kKeyName, {kTypeText, simulator::textFrom({u"a\xD800", 2})});
  content->put(kKeyTo, {kTypeText, simulator::textFrom({u"a\0b", 3})});
  const std::string text = stepText(simulator::theHost().makeDescriptor(content));
  EXPECT_THAT(text, HasSubstr(R"(textOfUnits(u"a\xD800", 2, text);)"));
  EXPECT_THAT(text, HasSubstr(R"(textOfUnits(u"a\x0000" u"b", 3, text);)"));
  EXPECT_THAT(itemText(R"("key": "Wdth", "type": "TEXT", "value": "\u00e9")"),
              HasSubstr("PutString(desc[0].get(), 0x57647468 /* keyWidth 'Wdth' */, \"\u00E9\");"));
}

TEST_F(Ready, WritesEveryFormOfAReference) {
  const std::string text = itemText(R"("key": "null", "type": "obj ", "value": [
      {"form": "Clss", "class": "Lyr "},
      {"form": "Enmr", "class": "Lyr ", "enumType": "Ordn", "value": "Trgt"},
      {"form": "Idnt", "class": "Lyr ", "value": 7},
      {"form": "indx", "class": "Lyr ", "value": 8},
      {"form": "rele", "class": "Lyr ", "value": -9},
      {"form": "prop", "class": "Prpr", "key": "Wdth"},
      {"form": "name", "class": "Lyr ", "value": "n"}])");
  const std::string layer = "(ref.get(), 0x4C797220 /* classLayer 'Lyr ' */";
  EXPECT_THAT(
      linesOf(text),
      testing::ElementsAre(
          "  error = sPSActionReference->Make(ref.out());",
          "  error = sPSActionReference->PutClass" + layer + ");",
          "  error = sPSActionReference->PutEnumerated" + layer +
              ", 0x4F72646E /* typeOrdinal 'Ordn' */, 0x54726774 /* enumTarget 'Trgt' */);",
          "  error = sPSActionReference->PutIdentifier" + layer + ", 7u);",
          "  error = sPSActionReference->PutIndex" + layer + ", 8u);",
          "  error = sPSActionReference->PutOffset" + layer + ", -9);",
          "  error = sPSActionReference->PutProperty(ref.get(), 0x50727072 /* classProperty 'Prpr' "
          "*/, 0x57647468 /* keyWidth 'Wdth' */);",
          "  error = sPSActionReference->PutName" + layer + ", \"n\");",
          "  error = sPSActionDescriptor->PutReference(desc[0].get(), 0x6E756C6C /* keyNull 'null' "
          "*/, ref.get());"));
}

TEST_F(Ready, WritesANameThatACStringCannotHoldByItsUnits) {
  const std::string text = stepText(descriptor(R"([{"key": "null", "type": "obj ", "value": [
      {"form": "name", "class": "Lyr ", "value": "a\u0000b"}]}])"));
  EXPECT_THAT(text, HasSubstr("  ActionReference ref;\n  OwnedText text;\n"));
  EXPECT_THAT(text, HasSubstr(R"(  error = textOfUnits(u"a\x0000" u"b", 3, text);)"));
  EXPECT_THAT(text, HasSubstr("PutNameZString(ref.get(), 0x4C797220 /* classLayer 'Lyr ' */, "
                              "text.get());"));
}

TEST_F(Ready, MarksAStepAsIncompleteIfTheHostHasNoBookmarkToReturn) {
  const PIActionDescriptor desc =
      descriptor(R"([{"key": "Wdth", "type": "bkmk", "value": "/no"}])");
  testing_support::AlteredSuite descriptors(sPSActionDescriptor);
  descriptors->GetBookmark = [](PIActionDescriptor, DescriptorKeyID, CFDataRef* value) -> OSErr {
    *value = nullptr;
    return 0;
  };
  EXPECT_THAT(stepText(desc), HasSubstr("// Incomplete: "));
}

TEST_F(Ready, DeclaresTheOwnersThatItUsesAndNoOthers) {
  const std::pair<const char*, const char*> owners[] = {
      {R"("type": "obj ", "value": [])", "  ActionReference ref;\n"},
      {R"("type": "alis", "value": "/no")", "  OwnedAlias alias;\n"},
      {R"("type": "bkmk", "value": "/no")", "  OwnedBookmark bookmark;\n"},
      {R"("type": "TEXT", "value": "a\u0000b")", "  OwnedText text;\n"}};
  for (const auto& [fields, used] : owners) {
    const std::string text =
        stepText(descriptor(std::string(R"([{"key": "Wdth", )") + fields + "}]"));
    for (const auto& [ignored, owner] : owners) {
      EXPECT_EQ(text.find(owner) != std::string::npos, owner == used) << used << " " << owner;
    }
  }
}

TEST_F(Ready, KeepsAReferenceWithoutForms) {
  const std::string text = itemText(R"("key": "Wdth", "type": "obj ", "value": [])");
  EXPECT_THAT(text, HasSubstr("sPSActionReference->Make(ref.out())"));
  EXPECT_THAT(text, Not(HasSubstr("Incomplete")));
}

TEST_F(Ready, ListsEveryActionAlsoOneWithoutSteps) {
  MemoryStream stream;
  ReadyFile file(stream.file());
  file.beginAction("S", "Empty", 1);
  file.beginAction("S", "\"Two\"", 2);
  file.addStep({"", 1, false}, kEventSet, nullptr);
  file.addStep({"b c", 2, true}, kEventSet, nullptr);
  file.finish();
  EXPECT_THAT(stream.text(), HasSubstr(R"(= {
    {"S", "\"Two\"", "", play2_1, false, true},
    {"S", "\"Two\"", "b c", play2_2_b_c, true, true},
    {nullptr)"));
  EXPECT_THAT(stream.text(),
              HasSubstr("    {\"S\", \"Empty\", 0},\n    {\"S\", \"\\\"Two\\\"\", 2},\n"));
  EXPECT_THAT(stream.text(), HasSubstr("step 1 \"\", not enabled: PlayAction leaves it out\n"));
}

TEST_F(Ready, TakesAnyNesting) {
  auto content = std::make_shared<simulator::Container>();
  constexpr int kDepth = 5000;
  for (int level = 0; level < kDepth; ++level) {
    auto outer = std::make_shared<simulator::Container>();
    outer->put(kKeyTo, {kTypeObject, simulator::Object{kClassLayer, content}});
    content = outer;
  }
  EXPECT_THAT(stepText(simulator::theHost().makeDescriptor(content)),
              HasSubstr("  ActionDescriptor desc[5001];\n"));
}

TEST_F(Ready, CutsALongFunctionIntoParts) {
  std::string values = R"({"type": "Objc", "class": "Lyr ", "value": []})";
  for (int i = 0; i < 999; ++i) values += R"(, {"type": "long", "value": 1})";
  const std::string json = R"([{"key": "Wdth", "type": "VlLs", "value": [)" + values + "]}]";
  const std::string text = stepText(descriptor(json));
  const std::string part2 =
      "static int play1_1_Name_part2(ActionDescriptor*, ActionList* list) {\n"
      "  int error = 0;\n"
      "  error = sPSActionList->PutInteger(list[0].get(), 1);\n";
  EXPECT_THAT(text, HasSubstr("static int play1_1_Name_part1(ActionDescriptor* desc, ActionList* "
                              "list) {\n"));
  EXPECT_THAT(text, HasSubstr(part2));
  EXPECT_THAT(text, HasSubstr("  ActionDescriptor desc[2];\n  ActionList list[1];\n"
                              "  error = play1_1_Name_part1(desc, list);\n" +
                              kCheck + "  error = play1_1_Name_part2(desc, list);\n" + kCheck +
                              "  error = sPSActionList->PutInteger("));
}

TEST_F(Ready, WritesAnIncompleteStepIfTheHostHasNoActionSuites) {
  simulator::theFaults().add({"Basic.AcquireSuite", -1, 0, 100});
  EXPECT_THAT(stepText(descriptor("[]")),
              HasSubstr("// Incomplete: the host has no action suites.\n"));
}

TEST_F(Ready, MarksAStepAsIncompleteIfTheHostHasNoTextForTheNameInAReference) {
  const PIActionDescriptor desc = descriptor(R"([{"key": "null", "type": "obj ", "value": [
      {"form": "name", "class": "Lyr ", "value": "n"}]}])");
  constexpr int kSuitesBefore = 4;  // those of the actions
  simulator::theFaults().add({"Basic.AcquireSuite", -1, kSuitesBefore, 100});
  EXPECT_THAT(stepText(desc), HasSubstr("// Incomplete: a form of a reference (GetNameZString = "));
}

TEST_F(Ready, DeclaresAStringOfAnyLengthWhole) {
  // The first is as long as the room that the host is given at first.
  for (const std::size_t length : {1022u, 1023u, 1024u, 5000u}) {
    const std::string name(length, 'x');
    auto content = std::make_shared<simulator::Container>();
    content->put(simulator::theHost().typeIds().idOf(name), {kTypeBoolean, true});
    const std::string text = stepText(simulator::theHost().makeDescriptor(content));
    EXPECT_THAT(text, Not(HasSubstr("Incomplete")));
    const std::string declaration = text.substr(0, text.find(';'));
    EXPECT_EQ(std::count(declaration.begin(), declaration.end(), 'x'),
              static_cast<std::ptrdiff_t>(length + identifierPart(name).size()));
  }
}

TEST_F(Ready, MarksAStepAsIncompleteIfTheHostDoesNotKnowItsOwnString) {
  const PIActionDescriptor desc =
      descriptor(R"([{"key": "$myKey", "type": "bool", "value": true}])");
  simulator::theFaults().add({"ActionControl.StringIDToTypeID", -1});
  EXPECT_THAT(stepText(desc), HasSubstr("// Incomplete: the host's string ID "));
}

}  // namespace
