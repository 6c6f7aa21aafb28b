#include <HostTerms.h>

#include <tuple>
#include <type_traits>

#include "codegen/Walkers.h"
#include "simulator/base/Faults.h"
#include "tests/codegen/GeneratorFixture.h"
#include "tests/support/AlteredSuite.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kDescriptorHead = R"(     // Move this to the top of the routine!
     PIActionDescriptor desc<1> = NULL;
     error = sPSActionDescriptor->Make(&desc<1>);
     if (error) goto returnError;

)";

const std::string kListHead = R"(     // Move this to the top of the routine!
     PIActionList list<1> = NULL;
     error = sPSActionList->Make(&list<1>);
     if (error) goto returnError;

)";

const std::string kReferenceHead = R"(     // Move this to the top of the routine!
     PIActionReference ref<1> = NULL;
     error = sPSActionReference->Make(&ref<1>);
     if (error) goto returnError;

)";

const std::string kCheck = "     if (error) goto returnError;\n\n";

class Walkers : public GeneratorFixture {
 protected:
  /// The text after the header for a descriptor with one item.
  std::string itemText(const std::string& fields) {
    return bodyText(numbered(walked(descriptor("[{" + fields + "}]"))), kDescriptorHead);
  }

  std::string elementText(const std::string& fields) {
    return bodyText(numbered(walked(list("[{" + fields + "}]"))), kListHead);
  }

  std::string formText(const std::string& fields) {
    return bodyText(numbered(walked(reference("[{" + fields + "}]"))), kReferenceHead);
  }

  static std::string bodyText(const std::string& text, const std::string& head) {
    EXPECT_THAT(text, StartsWith(head));
    return text.substr(head.size());
  }

  static std::string lookup(const std::string& name, const std::string& variable) {
    return "     error = sPSActionControl->StringIDToTypeID(\"" + name + "\", &" + variable +
           ");\n" + kCheck;
  }

  static std::string put(const std::string& statement) {
    return "     error = sPSActionDescriptor->" + statement + "\n" + kCheck;
  }

  static std::string putElement(const std::string& statement) {
    return "     error = sPSActionList->" + statement + "\n" + kCheck;
  }

  static std::string putForm(const std::string& statement) {
    return "     error = sPSActionReference->" + statement + "\n" + kCheck;
  }
};

TEST_F(Walkers, WriteNothingForNull) {
  EXPECT_EQ(walked(PIActionDescriptor{}), "");
  EXPECT_EQ(walked(PIActionList{}), "");
  EXPECT_EQ(walked(PIActionReference{}), "");
}

TEST_F(Walkers, WriteTheHeaderAndTheReleaseOfAnEmptyDescriptor) {
  EXPECT_EQ(numbered(walked(descriptor("[]"))), kDescriptorHead);
  EXPECT_THAT(numbered(dumped(kEventSet, descriptor("[]"))),
              HasSubstr("     if (desc<1> != NULL) sPSActionDescriptor->Free(desc<1>);\n"));
}

TEST_F(Walkers, WriteNumbers) {
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "long", "value": -2147483648)"),
            put("PutInteger(desc<1>, keyWidth, -2147483648);"));
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "comp", "value": 9007199254740993)"),
            put("PutInteger64(desc<1>, keyWidth, 9007199254740993);"));
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "doub", "value": 1e-7)"),
            put("PutFloat(desc<1>, keyWidth, 1e-07);"));
}

TEST_F(Walkers, WriteFloatsWithSixSignificantDigits) {
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "doub", "value": 0.1234567)"),
            put("PutFloat(desc<1>, keyWidth, 0.123457);"));
}

TEST_F(Walkers, WriteUnitFloats) {
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "UntF", "unit": "#Prc", "value": 50)"),
            put("PutUnitFloat(desc<1>, keyWidth, unitPercent, 50);"));
  EXPECT_EQ(itemText(R"("key": "Wdth", "type": "UntF", "unit": "$inches", "value": 2.5)"),
            lookup("inches", "runtimeUnitID") +
                put("PutUnitFloat(desc<1>, keyWidth, runtimeUnitID, 2.5);"));
}

TEST_F(Walkers, WriteBooleans) {
  EXPECT_EQ(itemText(R"("key": "Bckg", "type": "bool", "value": true)"),
            put("PutBoolean(desc<1>, keyBackground, true);"));
  EXPECT_EQ(itemText(R"("key": "Bckg", "type": "bool", "value": false)"),
            put("PutBoolean(desc<1>, keyBackground, false);"));
}

TEST_F(Walkers, LookUpTheValueOfAnEnumerationBeforeItsType) {
  EXPECT_EQ(itemText(R"("key": "T   ", "type": "enum", "enumType": "Ordn", "value": "Trgt")"),
            put("PutEnumerated(desc<1>, keyTo, typeOrdinal, enumTarget);"));
  EXPECT_EQ(itemText(R"("key": "$to", "type": "enum", "enumType": "$kind", "value": "$ones")"),
            lookup("to", "runtimeKeyID") + lookup("ones", "runtimeEnumID") +
                lookup("kind", "runtimeTypeID") +
                put("PutEnumerated(desc<1>, runtimeKeyID, runtimeTypeID, runtimeEnumID);"));
}

TEST_F(Walkers, LookUpTheKeyOfAClassOnceAndBeforeTheClass) {
  EXPECT_EQ(itemText(R"("key": "null", "type": "type", "value": "Lyr ")"),
            put("PutClass(desc<1>, keyNull, classLayer);"));
  EXPECT_EQ(itemText(R"("key": "$held", "type": "type", "value": "$thing")"),
            lookup("held", "runtimeKeyID") + lookup("thing", "runtimeClassID") +
                put("PutClass(desc<1>, runtimeKeyID, runtimeClassID);"));
}

TEST_F(Walkers, PutAGlobalClassAsAClassAndLookUpItsKeyAfterIt) {
  EXPECT_EQ(itemText(R"("key": "$held", "type": "GlbC", "value": "$thing")"),
            lookup("thing", "runtimeClassID") + lookup("held", "runtimeKeyID") +
                put("PutClass(desc<1>, runtimeKeyID, runtimeClassID);"));
}

TEST_F(Walkers, WriteAnObjectBeforeTheLookUpOfItsRunTimeKey) {
  const std::string nested = R"(          // Move this to the top of the routine!
          PIActionDescriptor desc<2> = NULL;
          error = sPSActionDescriptor->Make(&desc<2>);
          if (error) goto returnError;

          error = sPSActionControl->StringIDToTypeID("inner", &runtimeKeyID);
          if (error) goto returnError;

          error = sPSActionDescriptor->PutInteger(desc<2>, runtimeKeyID, 1);
          if (error) goto returnError;

)";
  const std::string value = R"([{"key": "$inner", "type": "long", "value": 1}])";
  EXPECT_EQ(itemText(R"("key": "$outer", "type": "Objc", "class": "Brsh", "value": )" + value),
            nested + lookup("outer", "runtimeKeyID") +
                put("PutObject(desc<1>, runtimeKeyID, classBrush, desc0x<2>);"));
  EXPECT_EQ(itemText(R"("key": "T   ", "type": "GlbO", "class": "$owner", "value": )" + value),
            nested + lookup("owner", "runtimeObjID") +
                put("PutGlobalObject(desc<1>, keyTo, runtimeObjID, desc0x<2>);"));
}

TEST_F(Walkers, WriteAListBeforeTheLookUpOfItsRunTimeKey) {
  EXPECT_EQ(itemText(R"("key": "$every", "type": "VlLs", "value": [{"type": "long", "value": 3}])"),
            R"(          // Move this to the top of the routine!
          PIActionList list<2> = NULL;
          error = sPSActionList->Make(&list<2>);
          if (error) goto returnError;

          error = sPSActionList->PutInteger(list<2>, 3);
          if (error) goto returnError;

)" + lookup("every", "runtimeKeyID") +
                put("PutList(desc<1>, runtimeKeyID, list0x<2>);"));
}

TEST_F(Walkers, WriteAReferenceAfterTheLookUpOfItsRunTimeKey) {
  EXPECT_EQ(
      itemText(R"("key": "$it", "type": "obj ", "value": [{"form": "Clss", "class": "Lyr "}])"),
      lookup("it", "runtimeKeyID") + R"(          // Move this to the top of the routine!
          PIActionReference ref<2> = NULL;
          error = sPSActionReference->Make(&ref<2>);
          if (error) goto returnError;

          error = sPSActionReference->PutClass(ref<2>, classLayer);
          if (error) goto returnError;

)" + put("PutReference(desc<1>, runtimeKeyID, ref0x<2>);"));
}

TEST_F(Walkers, WriteTextAfterAComment) {
  EXPECT_EQ(itemText(R"("key": "Nm  ", "type": "TEXT", "value": "Caf\u00e9")"),
            "     // Unicode String as UTF8: Caf\u00e9\n" +
                put("PutString(desc<1>, keyName, \"Caf\u00e9\");"));
  EXPECT_EQ(itemText(R"("key": "Nm  ", "type": "TEXT", "value": "")"),
            "     // Unicode String as UTF8: \n" + put("PutString(desc<1>, keyName, \"\");"));
}

TEST_F(Walkers, KeepTextWithSpecialCharactersOnOneLineOfValidSource) {
  EXPECT_EQ(itemText(R"("key": "Nm  ", "type": "TEXT", "value": "a \"b\"\n\t\u0001\\")"),
            "     // Unicode String as UTF8: a \\\"b\\\"\\n\\t\\001\\134\n" +
                put(R"(PutString(desc<1>, keyName, "a \"b\"\n\t\001\\");)"));
}

TEST_F(Walkers, WriteTheLengthOfRawData) {
  EXPECT_EQ(itemText(R"("key": "null", "type": "tdta", "value": "AAEC")"),
            put("PutData(desc<1>, keyNull, 3, voidPtrToData);"));
}

TEST_F(Walkers, NameAnUnknownTypeInAnErrorLineAndContinue) {
  const auto desc = descriptor(R"([{"key": "Nm  ", "type": "what"},
                                   {"key": "Wdth", "type": "long", "value": 1}])");
  EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
            "     ERROR DumpInfoFromDescriptor type: 'what', key: keyName, entry: 0\n" +
                put("PutInteger(desc<1>, keyWidth, 1);"));
  const auto elements = list(R"([{"type": "what"}, {"type": "long", "value": 1}])");
  EXPECT_EQ(bodyText(numbered(walked(elements)), kListHead),
            "     ERROR: DumpInfoFromList type: 'what', entry: 0, Total Entry: 2\n" +
                putElement("PutInteger(list<1>, 1);"));
}

TEST_F(Walkers, WriteAnUnknownTypeWholeIfItsStringIDBeginsWithAnApostrophe) {
  auto content = std::make_shared<simulator::Container>();
  content->put(kKeyName, {simulator::theHost().typeIds().idOf("'hello world"), {}});
  const auto desc = simulator::theHost().makeDescriptor(content);
  EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
            "     ERROR DumpInfoFromDescriptor type: 'hello world, key: keyName, entry: 0\n");
}

TEST_F(Walkers, NeverNameAnUnknownTypeByTheTable) {
  EXPECT_THAT(itemText(R"("key": "Nm  ", "type": "setd")"), HasSubstr(" type: 'setd', key:"));
}

TEST_F(Walkers, WriteEveryTypeInLists) {
  const std::string nestedDescriptor = R"(          // Move this to the top of the routine!
          PIActionDescriptor desc<2> = NULL;
          error = sPSActionDescriptor->Make(&desc<2>);
          if (error) goto returnError;

)";
  EXPECT_EQ(elementText(R"("type": "comp", "value": -5)"),
            putElement("PutInteger64(list<1>, -5);"));
  EXPECT_EQ(elementText(R"("type": "doub", "value": 2.5)"), putElement("PutFloat(list<1>, 2.5);"));
  EXPECT_EQ(elementText(R"("type": "UntF", "unit": "#Pxl", "value": 2)"),
            putElement("PutUnitFloat(list<1>, unitPixels, 2);"));
  EXPECT_EQ(elementText(R"("type": "bool", "value": true)"),
            putElement("PutBoolean(list<1>, true);"));
  EXPECT_EQ(elementText(R"("type": "enum", "enumType": "Ordn", "value": "Trgt")"),
            putElement("PutEnumerated(list<1>, typeOrdinal, enumTarget);"));
  EXPECT_EQ(elementText(R"("type": "type", "value": "$thing")"),
            lookup("thing", "runtimeClassID") + putElement("PutClass(list<1>, runtimeClassID);"));
  EXPECT_EQ(elementText(R"("type": "GlbC", "value": "Lyr ")"),
            putElement("PutClass(list<1>, classLayer);"));
  EXPECT_EQ(elementText(R"("type": "Objc", "class": "Brsh", "value": [])"),
            nestedDescriptor + putElement("PutObject(list<1>, classBrush, desc0x<2>);"));
  EXPECT_EQ(elementText(R"("type": "GlbO", "class": "Brsh", "value": [])"),
            nestedDescriptor + putElement("PutGlobalObject(list<1>, classBrush, desc0x<2>);"));
  EXPECT_THAT(elementText(R"("type": "VlLs", "value": [])"),
              testing::EndsWith(putElement("PutList(list<1>, list0x<2>);")));
  EXPECT_THAT(elementText(R"("type": "obj ", "value": [{"form": "Clss", "class": "Lyr "}])"),
              testing::EndsWith(putElement("PutReference(list<1>, ref0x<2>);")));
  EXPECT_EQ(elementText(R"("type": "TEXT", "value": "x")"),
            "     // Unicode String as UTF8: x\n" + putElement("PutString(list<1>, \"x\");"));
  EXPECT_EQ(elementText(R"("type": "tdta", "value": "")"),
            putElement("PutData(list<1>, 0, voidPtrToData);"));
}

TEST_F(Walkers, WriteEveryFormOfReference) {
  EXPECT_EQ(formText(R"("form": "Clss", "class": "Lyr ")"),
            putForm("PutClass(ref<1>, classLayer);"));
  EXPECT_EQ(formText(R"("form": "Enmr", "class": "Lyr ", "enumType": "Ordn", "value": "Trgt")"),
            putForm("PutEnumerated(ref<1>, classLayer, typeOrdinal, enumTarget);"));
  EXPECT_EQ(formText(R"("form": "Idnt", "class": "Lyr ", "value": 7)"),
            putForm("PutIdentifier(ref<1>, classLayer, 7);"));
  EXPECT_EQ(formText(R"("form": "prop", "class": "Prpr", "key": "Nm  ")"),
            putForm("PutProperty(ref<1>, classProperty, keyName);"));
  EXPECT_EQ(formText(R"("form": "rele", "class": "Lyr ", "value": -1)"),
            putForm("PutOffset(ref<1>, classLayer, -1);"));
  EXPECT_EQ(formText(R"("form": "indx", "class": "Lyr ", "value": 2)"),
            putForm("PutIndex(ref<1>, classLayer, 2);"));
  EXPECT_EQ(formText(R"("form": "name", "class": "Lyr ", "value": "My \"one\"")"),
            putForm(R"(PutName(ref<1>, classLayer, "My \"one\"");)"));
}

TEST_F(Walkers, LookUpTheRunTimeIdentifiersOfAReference) {
  EXPECT_EQ(formText(R"("form": "Enmr", "class": "$c", "enumType": "$t", "value": "$v")"),
            lookup("c", "runtimeClassID") + lookup("v", "runtimeEnumID") +
                lookup("t", "runtimeTypeID") +
                putForm("PutEnumerated(ref<1>, runtimeClassID, runtimeTypeID, runtimeEnumID);"));
  EXPECT_EQ(formText(R"("form": "prop", "class": "$c", "key": "$k")"),
            lookup("c", "runtimeClassID") + lookup("k", "runtimePropID") +
                putForm("PutProperty(ref<1>, runtimeClassID, runtimePropID);"));
}

TEST_F(Walkers, WriteAReferencesOwnFormFirstAndThenItsContainers) {
  const auto whole = reference(R"([{"form": "prop", "class": "Prpr", "key": "Nm  "},
                                   {"form": "indx", "class": "Lyr ", "value": 2},
                                   {"form": "Idnt", "class": "Dcmn", "value": 5}])");
  EXPECT_EQ(numbered(walked(whole)), kReferenceHead +
                                         putForm("PutProperty(ref<1>, classProperty, keyName);") +
                                         putForm("PutIndex(ref<1>, classLayer, 2);") +
                                         putForm("PutIdentifier(ref<1>, classDocument, 5);"));
}

TEST_F(Walkers, ReportAReferenceWithoutAForm) {
  EXPECT_EQ(numbered(walked(reference("[]"))),
            kReferenceHead + "     ERROR: DumpInfoFromReferene on GetForm = -1715\n");
}

TEST_F(Walkers, NameAnUnknownFormByItsNumber) {
  const simulator::Reference forms = {{.form = 0x77686174, .desiredClass = kClassLayer}};
  const auto whole = simulator::theHost().makeReference(forms);
  EXPECT_EQ(numbered(walked(whole)),
            kReferenceHead + "     ERROR: DumpInfoFromReferene on formID = 2003329396\n");
}

TEST_F(Walkers, NameTheFailedCallOfAReferenceAndItsError) {
  const std::pair<const char*, const char*> cases[] = {
      {"GetForm", R"("form": "Clss", "class": "Lyr ")"},
      {"GetDesiredClass", R"("form": "Clss", "class": "Lyr ")"},
      {"GetEnumerated", R"("form": "Enmr", "class": "Lyr ", "enumType": "Ordn", "value": "Trgt")"},
      {"GetIdentifier", R"("form": "Idnt", "class": "Lyr ", "value": 7)"},
      {"GetProperty", R"("form": "prop", "class": "Prpr", "key": "Nm  ")"},
      {"GetOffset", R"("form": "rele", "class": "Lyr ", "value": 7)"},
      {"GetIndex", R"("form": "indx", "class": "Lyr ", "value": 7)"},
      {"GetName", R"("form": "name", "class": "Lyr ", "value": "x")"},
      {"GetNameLength", R"("form": "name", "class": "Lyr ", "value": "x")"},
  };
  for (const auto& [call, form] : cases) {
    simulator::theFaults().add({std::string("ActionReference.") + call, -1731, 0, 1});
    EXPECT_EQ(formText(form),
              std::string("     ERROR: DumpInfoFromReferene on ") + call + " = -1731\n");
  }
}

TEST_F(Walkers, SkipOnlyTheContainerWhoseCountFails) {
  const auto desc = descriptor(R"([
    {"key": "T   ", "type": "Objc", "class": "Brsh", "value": [
      {"key": "Wdth", "type": "long", "value": 1}]},
    {"key": "Wdth", "type": "long", "value": 2}])");
  simulator::theFaults().add({"ActionDescriptor.GetCount", -1731, 1, 1});
  EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
            put("PutObject(desc<1>, keyTo, classBrush, desc0x<2>);") +
                put("PutInteger(desc<1>, keyWidth, 2);"));
  simulator::theFaults().add({"ActionDescriptor.GetCount", -1731, 0, 1});
  EXPECT_EQ(walked(desc), "");
}

TEST_F(Walkers, ReportAFailedItemAndContinueWithTheNext) {
  const auto desc = descriptor(R"([{"key": "Hght", "type": "long", "value": 1},
                                   {"key": "Wdth", "type": "long", "value": 2}])");
  simulator::theFaults().add({"ActionDescriptor.GetInteger", -1731, 0, 1});
  EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
            "     ERROR DumpInfoFromDescriptor type: 'long', key: keyHeight, entry: 0\n" +
                put("PutInteger(desc<1>, keyWidth, 2);"));
}

/// What the host of the next tests reports as a number of items, bytes or characters.
std::uint32_t reported;

template <class... Arguments>
OSErr report(Arguments... arguments) {
  const auto list = std::tuple(arguments...);
  using Number =
      std::remove_pointer_t<std::tuple_element_t<sizeof...(arguments) - 1, decltype(list)>>;
  *std::get<sizeof...(arguments) - 1>(list) = static_cast<Number>(reported);
  return 0;
}

constexpr std::uint32_t kImpossibleNumbers[] = {0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF};

TEST_F(Walkers, WriteNothingForAContainerWithAnImpossibleNumberOfItems) {
  const auto desc = descriptor(R"([{"key": "Wdth", "type": "long", "value": 1}])");
  const auto elements = list(R"([{"type": "long", "value": 1}])");
  testing_support::AlteredSuite descriptors(sPSActionDescriptor);
  testing_support::AlteredSuite lists(sPSActionList);
  descriptors->GetCount = report;
  lists->GetCount = report;
  for (const std::uint32_t count : kImpossibleNumbers) {
    reported = count;
    EXPECT_EQ(walked(desc), "") << count;
    EXPECT_EQ(walked(elements), "") << count;
  }
}

TEST_F(Walkers, ReportDataOfNegativeLengthAndContinueWithTheNextItem) {
  const auto desc = descriptor(R"([{"key": "Hght", "type": "tdta", "value": "AAEC"},
                                   {"key": "Wdth", "type": "long", "value": 2}])");
  const auto elements = list(R"([{"type": "tdta", "value": "AAEC"}])");
  testing_support::AlteredSuite descriptors(sPSActionDescriptor);
  testing_support::AlteredSuite lists(sPSActionList);
  descriptors->GetDataLength = report;
  lists->GetDataLength = report;
  for (const std::uint32_t length : {0x80000000, 0xFFFFFFFF}) {
    reported = length;
    EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
              "     ERROR DumpInfoFromDescriptor type: 'tdta', key: keyHeight, entry: 0\n" +
                  put("PutInteger(desc<1>, keyWidth, 2);"));
    EXPECT_EQ(bodyText(numbered(walked(elements)), kListHead),
              "     ERROR: DumpInfoFromList type: 'tdta', entry: 0, Total Entry: 1\n");
  }
}

TEST_F(Walkers, ReportANameOfImpossibleLengthWithoutReadingIt) {
  testing_support::AlteredSuite references(sPSActionReference);
  references->GetNameLength = report;
  references->GetName = [](PIActionReference, char*, uint32 size) {
    ADD_FAILURE() << "read into " << size << " bytes";
    return OSErr{-1};
  };
  for (const std::uint32_t length : kImpossibleNumbers) {
    reported = length;
    EXPECT_EQ(formText(R"("form": "name", "class": "Lyr ", "value": "x")"),
              "     ERROR: DumpInfoFromReferene on GetNameLength = 1348563565\n");
  }
}

TEST_F(Walkers, ReportTextOfImpossibleLengthAndContinueWithTheNextItem) {
  const auto desc = descriptor(R"([{"key": "Nm  ", "type": "TEXT", "value": "x"},
                                   {"key": "Wdth", "type": "long", "value": 2}])");
  testing_support::AlteredSuite strings(sASZString);
  strings->LengthAsUnicodeCString = [](ASZString) { return ASUInt32{0xFFFFFFFF}; };
  strings->AsUnicodeCString = [](ASZString, ASUnicode*, ASUInt32 size, ASBoolean) {
    ADD_FAILURE() << "read into " << size << " units";
    return ASErr{-1};
  };
  EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
            "     ERROR DumpInfoFromDescriptor type: 'TEXT', key: keyName, entry: 0\n" +
                put("PutInteger(desc<1>, keyWidth, 2);"));
}

TEST_F(Walkers, AskNothingAboutTextThatTheHostDoesNotGive) {
  const auto desc = descriptor(R"([{"key": "Nm  ", "type": "TEXT", "value": "x"},
                                   {"key": "Wdth", "type": "long", "value": 2}])");
  testing_support::AlteredSuite strings(sASZString);
  strings->LengthAsUnicodeCString = [](ASZString) {
    ADD_FAILURE() << "asked for the length of a text";
    return ASUInt32{0};
  };
  simulator::theFaults().add({"ActionDescriptor.GetZString", -1731, 0, 1});
  EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
            "     ERROR DumpInfoFromDescriptor type: 'TEXT', key: keyName, entry: 0\n" +
                put("PutInteger(desc<1>, keyWidth, 2);"));
}

TEST_F(Walkers, ReportTextAsFailedIfTheStringSuiteIsMissing) {
  const auto desc = descriptor(R"([{"key": "Nm  ", "type": "TEXT", "value": "x"},
                                   {"key": "Wdth", "type": "long", "value": 2}])");
  simulator::theFaults().add({"Basic.AcquireSuite", kSPSuiteNotFoundError, 4, 1});
  EXPECT_EQ(bodyText(numbered(walked(desc)), kDescriptorHead),
            "     ERROR DumpInfoFromDescriptor type: 'TEXT', key: keyName, entry: 0\n" +
                put("PutInteger(desc<1>, keyWidth, 2);"));
}

TEST_F(Walkers, CutNamesAt1023Characters) {
  const std::string longName(3000, 'n');
  EXPECT_EQ(itemText(R"("key": "$)" + longName + R"(", "type": "long", "value": 1)"),
            lookup(longName.substr(0, 1023), "runtimeKeyID") +
                put("PutInteger(desc<1>, runtimeKeyID, 1);"));
}

TEST_F(Walkers, QuoteCodesWithoutAName) {
  EXPECT_EQ(itemText(R"("key": "zzzz", "type": "type", "value": "zzzz")"),
            put("PutClass(desc<1>, 'zzzz', 'zzzz');"));
}

TEST_F(Walkers, WriteNothingIfTheHostHasNoActionSuites) {
  const PIActionDescriptor empty = descriptor("[]");
  simulator::theFaults().add({"Basic.AcquireSuite", -1, 0, 100});
  EXPECT_EQ(walked(empty), "");
  EXPECT_EQ(simulator::theFaults().fired(), 1U);
}

}  // namespace
