#include <HostTerms.h>

#include <cstdio>
#include <fstream>

#include "codegen/DumpDescriptor.h"
#include "simulator/base/Faults.h"
#include "tests/codegen/GeneratorFixture.h"
#include "tests/support/AlteredSuite.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::uint32_t kFirstCode = 0x20202020;

class DumpDescriptor : public GeneratorFixture {};

TEST_F(DumpDescriptor, WritesTheWholeFunctionOfADescriptor) {
  const auto desc =
      descriptor(R"([{"key": "Dmtr", "type": "UntF", "unit": "#Pxl", "value": 13.5}])");
  EXPECT_EQ(numbered(dumped(kEventSet, desc)),
            R"(SPErr PlayeventSet(/*your parameters go here*/void)
{
     PIActionDescriptor result = NULL;
     DescriptorTypeID runtimeKeyID;
     DescriptorTypeID runtimeTypeID;
     DescriptorTypeID runtimeObjID;
     DescriptorTypeID runtimeEnumID;
     DescriptorTypeID runtimeClassID;
     DescriptorTypeID runtimePropID;
     DescriptorTypeID runtimeUnitID;
     SPErr error = kSPNoError;
     // Move this to the top of the routine!
     PIActionDescriptor desc<1> = NULL;
     error = sPSActionDescriptor->Make(&desc<1>);
     if (error) goto returnError;

     error = sPSActionDescriptor->PutUnitFloat(desc<1>, keyDiameter, unitPixels, 13.5);
     if (error) goto returnError;

     error = sPSActionControl->Play(&result, eventSet, desc0x<1>, plugInDialogSilent);
     if (error) goto returnError;

returnError:
     if (result != NULL) sPSActionDescriptor->Free(result);
     if (desc<1> != NULL) sPSActionDescriptor->Free(desc<1>);
     return error;
}

)");
}

TEST_F(DumpDescriptor, PlaysANullDescriptorWithoutABody) {
  EXPECT_EQ(dumped(kEventSelect, nullptr),
            R"(SPErr PlayeventSelect(/*your parameters go here*/void)
{
     PIActionDescriptor result = NULL;
     DescriptorTypeID runtimeKeyID;
     DescriptorTypeID runtimeTypeID;
     DescriptorTypeID runtimeObjID;
     DescriptorTypeID runtimeEnumID;
     DescriptorTypeID runtimeClassID;
     DescriptorTypeID runtimePropID;
     DescriptorTypeID runtimeUnitID;
     SPErr error = kSPNoError;
     error = sPSActionControl->Play(&result, eventSelect, NULL, plugInDialogSilent);
     if (error) goto returnError;

returnError:
     if (result != NULL) sPSActionDescriptor->Free(result);
     return error;
}

)");
}

TEST_F(DumpDescriptor, NamesEventZeroByASingleApostrophe) {
  const std::string text = dumped(0, nullptr);
  EXPECT_THAT(text, StartsWith("SPErr Play'(/*your parameters go here*/void)\n{\n"));
  EXPECT_THAT(text, HasSubstr("     error = sPSActionControl->StringIDToTypeID(\"'\", "
                              "&runtimeEventID);\n"));
}

TEST_F(DumpDescriptor, LooksUpARunTimeEventAndPlaysTheVariable) {
  const std::uint32_t event = simulator::theHost().typeIds().idOf("sampleEvent");
  const std::string text = dumped(event, nullptr);
  EXPECT_THAT(text, StartsWith("SPErr PlaysampleEvent(/*your parameters go here*/void)\n"));
  EXPECT_THAT(text, HasSubstr("     SPErr error = kSPNoError;\n"
                              "     error = sPSActionControl->StringIDToTypeID(\"sampleEvent\", "
                              "&runtimeEventID);\n"
                              "     if (error) goto returnError;\n"
                              "\n"
                              "     error = sPSActionControl->Play(&result, runtimeEventID, NULL, "
                              "plugInDialogSilent);\n"));
}

TEST_F(DumpDescriptor, WritesAStringIDThatBeginsWithAnApostropheWhole) {
  const std::uint32_t event = simulator::theHost().typeIds().idOf("'hello world");
  const std::string text = dumped(event, nullptr);
  EXPECT_THAT(text, StartsWith("SPErr Play'hello world(/*your parameters go here*/void)\n"));
  EXPECT_THAT(text, HasSubstr("StringIDToTypeID(\"'hello world\", &runtimeEventID);\n"));
}

TEST_F(DumpDescriptor, PlaysAStringIDThatItDoesNotLookUpWhole) {
  testing_support::AlteredSuite control(sPSActionControl);
  control->TypeIDToStringID = [](DescriptorTypeID, char* stringID, uint32 size) {
    std::snprintf(stringID, size, "'hello world");
    return OSErr{0};
  };
  const std::string text = dumped(0xFF616263, nullptr);
  EXPECT_THAT(text, StartsWith("SPErr Play'hello world("));
  EXPECT_THAT(text, HasSubstr("Play(&result, 'hello world, NULL, plugInDialogSilent);\n"));
}

TEST_F(DumpDescriptor, DoesNotLookUpAnEventWithItsTopBitSet) {
  const std::string text = dumped(0xFF616263, nullptr);
  EXPECT_THAT(text, StartsWith("SPErr Play'\\377abc'("));
  EXPECT_THAT(text, HasSubstr("Play(&result, '\\377abc', NULL"));
  EXPECT_THAT(text, Not(HasSubstr("runtimeEventID")));
}

TEST_F(DumpDescriptor, LooksUpEventsBelowTheFirstCodeOnly) {
  EXPECT_THAT(dumped(kFirstCode - 1, nullptr), HasSubstr("&runtimeEventID"));
  EXPECT_THAT(dumped(kFirstCode, nullptr), HasSubstr("Play(&result, '    ', NULL"));
}

TEST_F(DumpDescriptor, AppendsOneFunctionPerDump) {
  const std::string first = dumped(kEventSet, nullptr);
  const std::string second = dumped(kEventSelect, descriptor("[]"));
  EXPECT_THAT(first, StartsWith("SPErr PlayeventSet"));
  EXPECT_THAT(second, StartsWith("SPErr PlayeventSelect"));
  EXPECT_EQ(fileText(), first + second);
}

TEST_F(DumpDescriptor, KeepsTheOldContentsOfTheFile) {
  std::ofstream(file()) << "// mine\n";
  dumped(kEventSet, nullptr);
  EXPECT_THAT(fileText(), StartsWith("// mine\nSPErr PlayeventSet"));
}

TEST_F(DumpDescriptor, LeavesTheTabLevelAtOneAndNoFreeZone) {
  dumped(kEventSet, descriptor(R"([{"key": "T   ", "type": "VlLs", "value": []}])"));
  EXPECT_EQ(tabLevel, 1);
  EXPECT_EQ(freeZone, nullptr);
}

TEST_F(DumpDescriptor, WritesNothingAndOpensNoFileIfASuiteIsMissing) {
  for (std::uint64_t missing = 0; missing < 4; ++missing) {
    PIUSuitesRelease();
    simulator::theFaults().add({"Basic.AcquireSuite", kSPSuiteNotFoundError, missing, 1});
    PIUDumpDescriptor(kEventSet, nullptr, file().c_str());
    EXPECT_EQ(simulator::theFaults().fired(), missing + 1);
    EXPECT_FALSE(std::filesystem::exists(file())) << missing;
  }
}

TEST_F(DumpDescriptor, AcquiresDescriptorListReferenceAndControlInThisOrder) {
  PIUDumpDescriptor(kEventSet, nullptr, file().c_str());
  EXPECT_THAT(acquiredSuites(),
              testing::ElementsAre(kPSActionDescriptorSuite, kPSActionListSuite,
                                   kPSActionReferenceSuite, kPSActionControlSuite));
}

TEST_F(DumpDescriptor, WritesNothingWithoutAHost) {
  sSPBasic = nullptr;
  PIUDumpDescriptor(kEventSet, nullptr, file().c_str());
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(DumpDescriptor, RunsToTheEndIfTheFileCannotBeOpened) {
  const auto desc =
      descriptor(R"([{"key": "T   ", "type": "Objc", "class": "Brsh", "value": []}])");
  PIUDumpDescriptor(kEventSet, desc, (folder() / "missing" / "dump.txt").c_str());
  EXPECT_EQ(tabLevel, 1);
  EXPECT_EQ(freeZone, nullptr);
  EXPECT_EQ(sPSActionControl.error, 0);
  EXPECT_TRUE(std::filesystem::is_empty(folder()));
}

TEST_F(DumpDescriptor, SurvivesAFullDisk) {
  const auto desc =
      descriptor(R"([{"key": "T   ", "type": "Objc", "class": "Brsh", "value": []}])");
  PIUDumpDescriptor(kEventSet, desc, "/dev/full");
  EXPECT_EQ(freeZone, nullptr);
  EXPECT_THAT(dumped(kEventSet, desc), EndsWith("     return error;\n}\n\n"))
      << "the next dump is whole";
}

TEST_F(DumpDescriptor, ReleasesContainersInTheOrderOfTheirCreation) {
  const auto desc = descriptor(R"([
    {"key": "T   ", "type": "Objc", "class": "Brsh", "value": [
      {"key": "null", "type": "obj ", "value": [{"form": "Clss", "class": "Lyr "}]}]},
    {"key": "null", "type": "VlLs", "value": []}])");
  EXPECT_THAT(numbered(dumped(kEventSet, desc)),
              HasSubstr("returnError:\n"
                        "     if (result != NULL) sPSActionDescriptor->Free(result);\n"
                        "     if (desc<1> != NULL) sPSActionDescriptor->Free(desc<1>);\n"
                        "     if (desc<2> != NULL) sPSActionDescriptor->Free(desc<2>);\n"
                        "     if (ref<3> != NULL) sPSActionReference->Free(ref<3>);\n"
                        "     if (list<4> != NULL) sPSActionList->Free(list<4>);\n"
                        "     return error;\n"));
}

}  // namespace
