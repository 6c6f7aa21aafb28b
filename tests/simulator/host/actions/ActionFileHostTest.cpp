// Action files as the content of the simulated host.
#include "actionfiles/ActionFileError.h"
#include "simulator/host/actions/ActionFileHost.h"
#include "tests/actionfiles/ActionFileWriter.h"
#include "tests/actionfiles/RandomSteps.h"
#include "tests/simulator/host/HostFixture.h"
#include "tests/support/Process.h"

namespace simulator {
namespace {

using testing_support::boxed;
using testing_support::codeId;
using testing_support::everyType;
using testing_support::RecordedSet;
using testing_support::setOf;
using testing_support::stepOf;
using testing_support::stepWith;
using testing_support::stringId;
using testing_support::valueOf;

class ActionFileHost : public HostTest {
 protected:
  /// The items of a descriptor in JSON.
  Json itemsOf(const actionfiles::Descriptor& descriptor) {
    return descriptorToJson(*hostDescriptor(descriptor, ids_), ids_);
  }

  std::string write(const std::string& name, const RecordedSet& set) {
    testing_support::writeFile(folder_.file(name), testing_support::written(set));
    return folder_.file(name);
  }

  TypeIds ids_;
  testing_support::TemporaryFolder folder_;
};

TEST_F(ActionFileHost, HasAnItemOfEveryType) {
  actionfiles::Descriptor descriptor;
  char key[] = "Key0";
  for (actionfiles::Value& value : everyType()) {
    descriptor.items.push_back({codeId(key), std::move(value)});
    ++key[3];
  }
  const Json expected = jsonOf(R"([
    {"key":"Key0","type":"long","value":-2147483648},
    {"key":"Key1","type":"comp","value":-9223372036854775807},
    {"key":"Key2","type":"doub","value":-0.0},
    {"key":"Key3","type":"bool","value":true},
    {"key":"Key4","type":"bool","value":false},
    {"key":"Key5","type":"UntF","unit":"#Pxl","value":13.5},
    {"key":"Key6","type":"enum","enumType":"$antiAliasType","value":"Anno"},
    {"key":"Key7","type":"TEXT","value":"\u00FC \"quoted\"\r\uD83C\uDFA8\u0000 end"},
    {"key":"Key8","type":"TEXT","value":""},
    {"key":"Key9","type":"TEXT","value":""},
    {"key":"Key:","type":"TEXT","value":"\uFFFD and \uFFFD"},
    {"key":"Key;","type":"type","value":"Lyr "},
    {"key":"Key<","type":"GlbC","value":"$layer"},
    {"key":"Key=","type":"Objc","class":"$point","value":[{"key":"Hrzn","type":"doub","value":1.5}]},
    {"key":"Key>","type":"GlbO","class":16973567,"value":[]},
    {"key":"Key?","type":"VlLs","value":[{"type":"long","value":1},{"type":"VlLs","value":[]}]},
    {"key":"Key@","type":"obj ","value":[
      {"form":"prop","class":"Lyr ","key":"fsel"},
      {"form":"prop","class":"Lyr ","key":"$layerEffects"},
      {"form":"Clss","class":"Lyr "},
      {"form":"Enmr","class":"Lyr ","enumType":"Ordn","value":"$targetEnum"},
      {"form":"rele","class":"Lyr ","value":-3},
      {"form":"Idnt","class":"Lyr ","value":4294967295},
      {"form":"indx","class":"Lyr ","value":7},
      {"form":"name","class":"Lyr ","value":"Ebene \u00E4 \uD83D\uDE00"},
      {"form":"name","class":"Lyr ","value":"a\uFFFDz"},
      {"form":"name","class":"Lyr ","value":""}]},
    {"key":"KeyA","type":"obj ","value":[]},
    {"key":"KeyB","type":"tdta","value":"AP8gcmF3"},
    {"key":"KeyC","type":"tdta","value":""},
    {"key":"KeyD","type":"alis","value":"a\u00E4.psd"},
    {"key":"KeyE","type":"Pth ","value":"/Users/a/b.psd"},
    {"key":"KeyF","type":"bkmk","value":""},
    {"key":"KeyG","type":"UnFl"},
    {"key":"KeyH","type":"ObAr"}])");
  const Json json = itemsOf(descriptor);
  ASSERT_EQ(json.size(), expected.size());
  for (std::size_t i = 0; i < json.size(); ++i) EXPECT_EQ(json[i], expected[i]) << i;
}

TEST_F(ActionFileHost, KeepsTheBytesOfFilesThatAPathDoesNotSay) {
  const auto fileOf = [this](std::uint32_t type, const std::string& bytes) {
    actionfiles::Descriptor descriptor;
    descriptor.items.push_back({codeId("file"), valueOf(type, actionfiles::Data{bytes})});
    return std::get<FilePath>(hostDescriptor(descriptor, ids_)->entries.at(0).item.value);
  };
  EXPECT_EQ(fileOf(actionfiles::kAlias, "any"), (FilePath{"", "any"}));
  EXPECT_EQ(fileOf(actionfiles::kBookmark, "book"), (FilePath{"", "book"}));
  EXPECT_EQ(fileOf(actionfiles::kPath, "any"), (FilePath{"", "any"}));
  const std::string path("txtu\x12\0\0\0\1\0\0\0a\0", 14);
  EXPECT_EQ(fileOf(actionfiles::kPath, path), FilePath{"a"}) << "a path says everything";
}

TEST_F(ActionFileHost, NumbersStringIDsAsTheyAppear) {
  actionfiles::Descriptor inner;
  inner.type.id = stringId("third");
  inner.items.push_back({stringId("fourth"), valueOf(actionfiles::kBoolean, true)});
  std::vector<actionfiles::Item> items;
  items.push_back({stringId("second"), boxed(actionfiles::kObject, std::move(inner))});
  items.push_back({stringId("first"), valueOf(actionfiles::kBoolean, true)});
  const RecordedStep step = hostStep(stepOf(stringId("first"), "Name", std::move(items)), ids_);
  EXPECT_EQ(step.event, 1u);
  for (std::uint32_t id = 1; id <= 4; ++id) {
    constexpr const char* kNames[] = {"first", "second", "third", "fourth"};
    ASSERT_NE(ids_.stringOf(id), nullptr);
    EXPECT_EQ(*ids_.stringOf(id), kNames[id - 1]);
  }
  EXPECT_EQ(step.parameters->entries.at(1).key, 1u);
}

TEST_F(ActionFileHost, TakesTheLastValueOfAKeyThatAFileRepeats) {
  actionfiles::Descriptor descriptor;
  for (const std::int32_t value : {1, 2}) {
    descriptor.items.push_back({codeId("Wdth"), valueOf(actionfiles::kInteger, value)});
  }
  EXPECT_EQ(itemsOf(descriptor).dump(), R"([{"key":"Wdth","type":"long","value":2}])");
}

TEST_F(ActionFileHost, HandsOutTheUnitsOfTextsAndNamesThatUtf8CannotEncode) {
  actionfiles::Descriptor descriptor;
  const std::u16string lone(u"a\xD800z", 3);
  descriptor.items.push_back(
      {codeId("Nm  "), boxed(actionfiles::kText, testing_support::textOf(lone))});
  actionfiles::Reference name;
  name.push_back(
      {actionfiles::kNameForm, {}, testing_support::inBox(testing_support::textOf(lone))});
  descriptor.items.push_back({codeId("null"), valueOf(actionfiles::kReference, std::move(name))});
  const PIActionDescriptor handle = theHost().makeDescriptor(hostDescriptor(descriptor, ids_));

  const auto expectUnits = [&](ASZString string) {
    ASUnicode units[4] = {};
    ASSERT_EQ(strings_->LengthAsUnicodeCString(string), 3u);
    EXPECT_EQ(strings_->AsUnicodeCString(string, units, 4, true), 0);
    EXPECT_EQ(std::u16string(units, units + 3), lone);
    strings_->Release(string);
  };
  ASZString string = nullptr;
  ASSERT_EQ(descriptors_->GetZString(handle, kKeyName, &string), 0);
  // Put back, too: the host keeps what it was given.
  PIActionDescriptor copy = descriptorOf("[]");
  EXPECT_EQ(descriptors_->PutZString(copy, kKeyName, string), 0);
  expectUnits(string);
  ASSERT_EQ(descriptors_->GetZString(copy, kKeyName, &string), 0);
  expectUnits(string);
  PIActionReference reference = nullptr;
  ASSERT_EQ(descriptors_->GetReference(handle, kKeyTarget, &reference), 0);
  ASSERT_EQ(references_->GetNameZString(reference, &string), 0);
  expectUnits(string);
  references_->Free(reference);
}

TEST_F(ActionFileHost, HasAStepWithoutDescriptor) {
  actionfiles::Step step;
  step.event = codeId("Stop");
  step.name = "Stop here";
  step.dialogOptions = 1;
  const RecordedStep recorded = hostStep(step, ids_);
  EXPECT_EQ(recorded.event, fourCharCode("Stop"));
  EXPECT_EQ(recorded.name, "Stop here");
  EXPECT_FALSE(recorded.enabled);
  EXPECT_EQ(recorded.dialog, 1);
  EXPECT_EQ(recorded.parameters, nullptr);
}

TEST_F(ActionFileHost, LoadsFilesAsTheSetsOfTheModel) {
  RecordedSet first = setOf({});
  first.head.name = testing_support::textOf(u"Erste \u00E4");
  first.actions.push_back({{.name = testing_support::textOf(u"Second")}, {}});
  first.actions[1].steps.push_back(stepOf(codeId("slct"), "Select", {}));
  Model model;
  loadActionFiles({write("a.atn", first), write("b.atn", setOf({}))}, model, ids_);
  ASSERT_EQ(model.actionSets.size(), 2u);
  EXPECT_EQ(model.actionSets[0].name, "Erste \u00E4");
  EXPECT_EQ(model.actionSets[1].id, 2u);
  ASSERT_EQ(model.actionSets[0].actions.size(), 2u);
  EXPECT_EQ(model.actionSets[0].actions[1].name, "Second");
  EXPECT_EQ(model.actionSets[0].actions[1].steps.at(0).name, "Select");
  EXPECT_EQ(model.actionSets[1].actions.at(0).id, 3u);
}

TEST_F(ActionFileHost, LeavesTheModelAloneIfAFileIsBroken) {
  Model model;
  testing_support::writeFile(folder_.file("broken.atn"), "no action file");
  EXPECT_THROW(
      loadActionFiles({write("a.atn", setOf({})), folder_.file("broken.atn")}, model, ids_),
      actionfiles::ActionFileError);
  EXPECT_EQ(model.actionSets.at(0).name, "Default Actions");
}

TEST_F(ActionFileHost, TakesInRandomStepsOfEveryKind) {
  const std::string bytes = testing_support::written(testing_support::RandomSteps(11).set(300));
  actionfiles::MemorySource source(bytes);
  const ActionSet set = readActionSet(source, ids_);
  std::size_t steps = 0;
  for (const Action& action : set.actions) {
    for (const RecordedStep& step : action.steps) {
      ++steps;
      if (step.parameters == nullptr) continue;
      // Every part can be written as JSON, which visits all of it.
      EXPECT_TRUE(descriptorToJson(*step.parameters, ids_).is_array());
    }
  }
  EXPECT_EQ(steps, 300u);
}

}  // namespace
}  // namespace simulator
