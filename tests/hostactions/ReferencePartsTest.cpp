#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "hostactions/ReferenceParts.h"
#include "tests/hostactions/RecordingHost.h"

using namespace simulator;
using namespace testing_support;

namespace {

constexpr int kPartError = -1234;

class ReferenceParts : public testing::Test {
 protected:
  /// The forms of a reference made of the parts.
  template <class... Parts>
  static Reference formsOf(const Parts&... part) {
    ActionReference reference;
    EXPECT_EQ(makeReference(reference, part...), 0);
    return theHost().contentOf(reference.get());
  }

  /// A part that counts its calls and returns `error`.
  auto countingPart(int error) {
    return [this, error](PIActionReference) {
      ++calls_;
      return error;
    };
  }

  Machine machine_;
  int calls_ = 0;
};

}  // namespace

TEST_F(ReferenceParts, PutTheNameOfAnObject) {
  EXPECT_EQ(formsOf(namePart(kClassAction, "Vignette")),
            (Reference{{.form = kFormName, .desiredClass = kClassAction, .name = "Vignette"}}));
}

TEST_F(ReferenceParts, PutTheIndexOfAnObject) {
  EXPECT_EQ(formsOf(indexPart(kClassLayer, 3)),
            (Reference{{.form = kFormIndex, .desiredClass = kClassLayer, .value = 3}}));
}

TEST_F(ReferenceParts, PutTheIdentifierOfAnObject) {
  EXPECT_EQ(
      formsOf(identifierPart(kClassDocument, 0xFFFFFFFF)),
      (Reference{{.form = kFormIdentifier, .desiredClass = kClassDocument, .value = 0xFFFFFFFF}}));
}

TEST_F(ReferenceParts, PutAProperty) {
  EXPECT_EQ(
      formsOf(propertyPart(kClassProperty, kKeyTool)),
      (Reference{{.form = kFormProperty, .desiredClass = kClassProperty, .value = kKeyTool}}));
}

TEST_F(ReferenceParts, PutAClass) {
  EXPECT_EQ(formsOf(classPart(kClassBrush)),
            (Reference{{.form = kFormClass, .desiredClass = kClassBrush}}));
}

TEST_F(ReferenceParts, PutTheCurrentObjectAsTheTargetOrdinal) {
  EXPECT_EQ(formsOf(currentPart(kClassApplication)), (Reference{{.form = kFormEnumerated,
                                                                 .desiredClass = kClassApplication,
                                                                 .enumType = kTypeOrdinal,
                                                                 .value = kEnumTarget}}));
}

TEST_F(ReferenceParts, ArePutInOrder) {
  const Reference forms =
      formsOf(propertyPart(kClassProperty, kKeyName), indexPart(kClassLayer, 2),
              identifierPart(kClassDocument, 77), currentPart(kClassApplication));
  ASSERT_EQ(forms.size(), 4U);
  EXPECT_EQ(forms[0].form, kFormProperty);
  EXPECT_EQ(forms[1].form, kFormIndex);
  EXPECT_EQ(forms[2].form, kFormIdentifier);
  EXPECT_EQ(forms[3].form, kFormEnumerated);
}

TEST_F(ReferenceParts, MakeAnEmptyReferenceIfThereAreNone) { EXPECT_EQ(formsOf(), Reference{}); }

TEST_F(ReferenceParts, StopAtTheFirstThatFailsAndReturnItsError) {
  ActionReference reference;
  EXPECT_EQ(makeReference(reference, indexPart(kClassLayer, 2), countingPart(0),
                          countingPart(kPartError), countingPart(-1), classPart(kClassBrush)),
            kPartError);
  EXPECT_EQ(calls_, 2);
  EXPECT_EQ(theHost().contentOf(reference.get()),
            (Reference{{.form = kFormIndex, .desiredClass = kClassLayer, .value = 2}}));
}

TEST_F(ReferenceParts, StopAtTheFirstThatTheHostRefuses) {
  const char* const procedures[] = {"PutName",     "PutIndex", "PutIdentifier",
                                    "PutProperty", "PutClass", "PutEnumerated"};
  for (std::size_t failing = 0; failing < std::size(procedures); ++failing) {
    theFaults().add({std::string("ActionReference.") + procedures[failing], kPartError, 0, 1});
    ActionReference reference;
    EXPECT_EQ(
        makeReference(reference, namePart(kClassAction, "Vignette"), indexPart(kClassLayer, 1),
                      identifierPart(kClassDocument, 1), propertyPart(kClassProperty, kKeyTool),
                      classPart(kClassBrush), currentPart(kClassApplication)),
        kPartError)
        << procedures[failing];
    EXPECT_EQ(theHost().contentOf(reference.get()).size(), failing) << procedures[failing];
  }
}

TEST_F(ReferenceParts, AreNotPutIfTheReferenceCannotBeMade) {
  theFaults().add({"ActionReference.Make", kPartError, 0, 1});
  ActionReference reference;
  EXPECT_EQ(makeReference(reference, countingPart(0)), kPartError);
  EXPECT_EQ(calls_, 0);
  EXPECT_FALSE(reference);
}

TEST_F(ReferenceParts, ThrowTheHostsCodeIfTheSuiteIsRefused) {
  RecordingHost recorder;
  recorder.refuse(kPSActionReferenceSuite, kPartError, 1);
  ActionReference reference;
  const Outcome outcome = attempt([&] { return makeReference(reference, countingPart(0)); });
  EXPECT_TRUE(outcome.threw);
  EXPECT_EQ(outcome.thrown, static_cast<std::uint32_t>(kPartError));
  EXPECT_EQ(calls_, 0);
}

TEST_F(ReferenceParts, GetTheHostsAnswer) {
  ActionReference reference;
  ActionDescriptor result;
  EXPECT_EQ(getAnswer(reference, result, propertyPart(kClassProperty, kKeyTool),
                      currentPart(kClassApplication)),
            0);
  const auto gets = machine_.lines("get");
  ASSERT_EQ(gets.size(), 1U);
  EXPECT_EQ(gets[0]["reference"], jsonOf(R"([
      {"form": "prop", "class": "Prpr", "key": "Tool"},
      {"form": "Enmr", "class": "capp", "enumType": "Ordn", "value": "Trgt"}])"));
  ASSERT_TRUE(result);
  EXPECT_NE(theHost().contentOf(result.get())->find(kKeyTool), nullptr);
}

TEST_F(ReferenceParts, GetNoAnswerIfOneFails) {
  ActionReference reference;
  ActionDescriptor result;
  EXPECT_EQ(getAnswer(reference, result, classPart(kClassBrush), countingPart(kPartError)),
            kPartError);
  EXPECT_TRUE(reference);
  EXPECT_FALSE(result);
  EXPECT_TRUE(machine_.lines("get").empty());
}

TEST_F(ReferenceParts, GetTheErrorOfAFailedAnswer) {
  theFaults().add({"ActionControl.Get", kPartError, 0, 1});
  ActionReference reference;
  ActionDescriptor result;
  EXPECT_EQ(getAnswer(reference, result, propertyPart(kClassProperty, kKeyTool),
                      currentPart(kClassApplication)),
            kPartError);
  EXPECT_TRUE(reference);
  EXPECT_FALSE(result);
}
