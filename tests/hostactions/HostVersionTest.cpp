#include <HostTerms.h>
#include <PIProperties.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "hostactions/HostVersion.h"
#include "suites/HostObjects.h"
#include "tests/support/AlteredSuite.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

constexpr int kUntouched = -77;
constexpr DescriptorClassID kIgnoredClass = fourCharCode("none");

struct Answer {
  int result;
  int major = kUntouched;
  int minor = kUntouched;
  bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Answer& a) {
  return out << a.result << " (" << a.major << '.' << a.minor << ')';
}

constexpr Answer kNone = {0, kUntouched, kUntouched};

class HostVersionQuery : public testing::Test {
 protected:
  static Answer ask() {
    Answer answer = kNone;
    answer.result = PSMajorVersion(&answer.major, &answer.minor);
    EXPECT_EQ(theHost().objectsOwned(), 0U);
    return answer;
  }

  std::size_t questions() const { return machine.lines("get").size(); }

  static void acquireAll() {
    sPSActionReference.AcquireSuite(true);
    sPSActionControl.AcquireSuite(true);
    sPSActionDescriptor.AcquireSuite(true);
  }

  /// Makes the host answer with a version descriptor of these entries.
  static void answerWith(std::vector<Entry> version) {
    const Object object = {kIgnoredClass, std::make_shared<Container>(std::move(version))};
    auto answer = std::make_shared<Container>();
    answer->put(kKeyHostVersion, {kTypeObject, object});
    theHost().setAnswer(kKeyHostVersion, answer);
  }

  static Entry number(DescriptorKeyID key, std::int32_t value) {
    return {key, {kTypeInteger, value}};
  }

  Machine machine;
};

TEST_F(HostVersionQuery, ReturnsMajorAndMinor) { EXPECT_EQ(ask(), (Answer{12, 12, 1})); }

TEST_F(HostVersionQuery, AsksForThePropertyOfTheCurrentApplication) {
  ask();
  ASSERT_EQ(questions(), 1U);
  const Json reference = {
      {{"form", "prop"}, {"class", "Prpr"}, {"key", "HstV"}},
      {{"form", "Enmr"}, {"class", "capp"}, {"enumType", "Ordn"}, {"value", "Trgt"}}};
  EXPECT_EQ(machine.lines("get")[0]["reference"], reference);
}

TEST_F(HostVersionQuery, ReturnsZeroForANullPointerWithoutAsking) {
  int number = kUntouched;
  EXPECT_EQ(PSMajorVersion(nullptr, &number), 0);
  EXPECT_EQ(PSMajorVersion(&number, nullptr), 0);
  EXPECT_EQ(PSMajorVersion(nullptr, nullptr), 0);
  EXPECT_EQ(number, kUntouched);
  EXPECT_TRUE(machine.lines().empty());
}

TEST_F(HostVersionQuery, ReturnsZeroForANullPointerEvenIfTheVersionIsCached) {
  ask();
  int number = kUntouched;
  EXPECT_EQ(PSMajorVersion(&number, nullptr), 0);
  EXPECT_EQ(PSMajorVersion(nullptr, &number), 0);
  EXPECT_EQ(number, kUntouched);
  EXPECT_EQ(ask(), (Answer{12, 12, 1}));
}

TEST_F(HostVersionQuery, ReturnsTheCachedVersionAfterTheFirstSuccess) {
  ask();
  theHost().setVersion({{13, 7}});
  machine.drain();
  EXPECT_EQ(ask(), (Answer{12, 12, 1}));
  theHost().setVersion(std::nullopt);
  EXPECT_EQ(ask(), (Answer{12, 12, 1}));
  EXPECT_TRUE(machine.drain().empty());
}

TEST_F(HostVersionQuery, ReturnsMajorVersionZeroAndAsksAgain) {
  theHost().setVersion({{0, 5}});
  for (std::size_t call = 1; call <= 3; ++call) {
    EXPECT_EQ(ask(), (Answer{0, 0, 5}));
    EXPECT_EQ(questions(), call);
  }
  theHost().setVersion({{11, 0}});
  EXPECT_EQ(ask(), (Answer{11, 11, 0}));
}

TEST_F(HostVersionQuery, AcceptsNegativeVersions) {
  theHost().setVersion({{-3, -4}});
  EXPECT_EQ(ask(), (Answer{-3, -3, -4}));
  EXPECT_EQ(ask(), (Answer{-3, -3, -4}));
  EXPECT_EQ(questions(), 1U);
}

TEST_F(HostVersionQuery, AsksAHostWithoutAnAnswerAgainAtEachCall) {
  theHost().setVersion(std::nullopt);
  for (std::size_t call = 1; call <= 3; ++call) {
    EXPECT_EQ(ask(), kNone);
    EXPECT_EQ(questions(), call);
  }
  theHost().setVersion({{12, 1}});
  EXPECT_EQ(ask(), (Answer{12, 12, 1}));
}

TEST_F(HostVersionQuery, ReturnsZeroForAnAnswerWithoutTheVersion) {
  theHost().setAnswer(kKeyHostVersion, std::make_shared<Container>());
  EXPECT_EQ(ask(), kNone);
  theHost().setAnswer(kKeyHostVersion, nullptr);
  EXPECT_EQ(ask(), (Answer{12, 12, 1}));
}

TEST_F(HostVersionQuery, ReturnsZeroIfTheVersionIsNotAnObject) {
  auto answer = std::make_shared<Container>();
  answer->put(kKeyHostVersion, {kTypeInteger, 12});
  theHost().setAnswer(kKeyHostVersion, answer);
  EXPECT_EQ(ask(), kNone);
}

TEST_F(HostVersionQuery, ReturnsZeroForAVersionWithoutAMajorNumber) {
  answerWith({number(kKeyVersionMinor, 5)});
  EXPECT_EQ(ask(), kNone);
}

TEST_F(HostVersionQuery, CachesMinorZeroForAVersionWithoutAMinorNumber) {
  answerWith({number(kKeyVersionMajor, 12)});
  EXPECT_EQ(ask(), (Answer{12, 12, 0}));
  theHost().setAnswer(kKeyHostVersion, nullptr);
  EXPECT_EQ(ask(), (Answer{12, 12, 0}));
  EXPECT_EQ(questions(), 1U);
}

TEST_F(HostVersionQuery, ReturnsZeroForAnUnreadableMajorNumberAndAsksAgain) {
  answerWith({{kKeyVersionMajor, {kTypeBoolean, true}}, number(kKeyVersionMinor, 5)});
  EXPECT_EQ(ask(), (Answer{0, 0, 5}));
  theHost().setAnswer(kKeyHostVersion, nullptr);
  EXPECT_EQ(ask(), (Answer{12, 12, 1}));
}

/// A host call of the query, the number of calls to the same procedure before it, and the query's
/// result if it fails.
struct FailingCall {
  const char* procedure;
  std::uint64_t after;
  Answer answer;
};

std::ostream& operator<<(std::ostream& out, const FailingCall& call) {
  return out << call.procedure << " after " << call.after << ": " << call.answer;
}

class HostVersionFailingCall : public HostVersionQuery,
                               public testing::WithParamInterface<FailingCall> {};

TEST_P(HostVersionFailingCall, FreesEverythingThatWasCreated) {
  const FailingCall& failing = GetParam();
  theFaults().add({failing.procedure, -1715, failing.after, 1});
  EXPECT_EQ(ask(), failing.answer);
  EXPECT_EQ(theFaults().fired(), 1U);
  const bool cached = failing.answer.result != 0;
  EXPECT_EQ(ask(), cached ? failing.answer : (Answer{12, 12, 1}));
}

INSTANTIATE_TEST_SUITE_P(Calls, HostVersionFailingCall,
                         testing::Values(FailingCall{"ActionReference.Make", 0, kNone},
                                         FailingCall{"ActionReference.PutProperty", 0, kNone},
                                         FailingCall{"ActionReference.PutEnumerated", 0, kNone},
                                         FailingCall{"ActionControl.Get", 0, kNone},
                                         FailingCall{"ActionDescriptor.HasKey", 0, kNone},
                                         FailingCall{"ActionDescriptor.GetObject", 0, kNone},
                                         FailingCall{"ActionDescriptor.HasKey", 1, kNone},
                                         FailingCall{"ActionDescriptor.GetInteger", 0, {0, 0, 1}},
                                         FailingCall{"ActionDescriptor.GetInteger", 1, {12, 12, 0}},
                                         FailingCall{"ActionDescriptor.Free", 0, {12, 12, 1}},
                                         FailingCall{"ActionDescriptor.Free", 1, {12, 12, 1}},
                                         FailingCall{"ActionReference.Free", 0, {12, 12, 1}}),
                         [](const auto& call) {
                           std::string name = call.param.procedure;
                           std::erase(name, '.');
                           return name + std::to_string(call.param.after);
                         });

TEST_F(HostVersionQuery, LeaksNothingIfAnyHostCallFails) {
  acquireAll();
  // Counts a run as failed unless it returns the major version.
  const auto call = [] { return Outcome{.result = ask().result == 12 ? 0 : 1}; };
  const auto check = [](int n, const Outcome& outcome) {
    EXPECT_FALSE(outcome.threw);
    // The ninth call reads the minor version; its failure does not fail the query.
    EXPECT_EQ(outcome.result, n < 8 ? 1 : 0) << n;
  };
  EXPECT_EQ(failEachHostCall(-1715, call, check), 9);
  EXPECT_EQ(ask(), (Answer{12, 12, 0}));
}

/// Refuses the n-th acquisition once; the order is reference, control, descriptor.
class HostVersionRefusedSuite : public HostVersionQuery,
                                public testing::WithParamInterface<std::uint64_t> {};

TEST_P(HostVersionRefusedSuite, ThrowsAndFreesEverything) {
  theFaults().add({"Basic.AcquireSuite", -1234, GetParam(), 1});
  Answer answer = kNone;
  try {
    answer.result = PSMajorVersion(&answer.major, &answer.minor);
    FAIL() << "nothing was thrown";
  } catch (std::uint32_t code) {
    EXPECT_EQ(code, static_cast<std::uint32_t>(-1234));
  }
  EXPECT_EQ(answer, kNone);
  EXPECT_EQ(theHost().objectsOwned(), 0U);
  EXPECT_EQ(ask(), (Answer{12, 12, 1}));
}

INSTANTIATE_TEST_SUITE_P(Acquisitions, HostVersionRefusedSuite, testing::Values(0, 1, 2));

/// Replaces the host's procedures that free objects by ones that record the objects.
class HostVersionFreeOrder : public HostVersionQuery {
 protected:
  HostVersionFreeOrder() {
    acquireAll();
    freed.clear();
    descriptors = *sPSActionDescriptor.suite;
    references = *sPSActionReference.suite;
    hostDescriptors = sPSActionDescriptor.suite;
    hostReferences = sPSActionReference.suite;
    descriptors.Free = [](PIActionDescriptor descriptor) {
      freed.push_back(
          theHost().contentOf(descriptor)->find(kKeyHostVersion) != nullptr ? "result" : "version");
      return hostDescriptors->Free(descriptor);
    };
    references.Free = [](PIActionReference reference) {
      freed.emplace_back("reference");
      return hostReferences->Free(reference);
    };
    sPSActionDescriptor.suite = &descriptors;
    sPSActionReference.suite = &references;
  }
  ~HostVersionFreeOrder() override {
    sPSActionDescriptor.suite = hostDescriptors;
    sPSActionReference.suite = hostReferences;
  }

  static inline std::vector<std::string> freed;
  static inline const PSActionDescriptorProcs* hostDescriptors = nullptr;
  static inline const PSActionReferenceProcs* hostReferences = nullptr;
  PSActionDescriptorProcs descriptors;
  PSActionReferenceProcs references;
};

using Freed = std::vector<std::string>;

TEST_F(HostVersionFreeOrder, IsResultThenVersionThenReference) {
  ask();
  EXPECT_EQ(freed, (Freed{"result", "version", "reference"}));
}

TEST_F(HostVersionFreeOrder, ContainsOnlyWhatWasCreated) {
  theFaults().add({"ActionDescriptor.GetObject", -1715, 0, 1});
  ask();
  EXPECT_EQ(freed, (Freed{"result", "reference"}));
  freed.clear();
  theFaults().add({"ActionControl.Get", -1715, 0, 1});
  ask();
  EXPECT_EQ(freed, (Freed{"reference"}));
  freed.clear();
  theFaults().add({"ActionReference.Make", -1715, 0, 1});
  ask();
  EXPECT_EQ(freed, Freed{});
}

class HostVersionIsModal : public testing::Test {
 protected:
  Machine machine;
};

TEST_F(HostVersionIsModal, ReturnsWhatThePropertySays) {
  theHost().setModal(0);
  EXPECT_FALSE(PSIsModal());
  for (const std::intptr_t value : {1L, 2L, -1L, 0x100L, -0x80000000L}) {
    theHost().setModal(value);
    EXPECT_TRUE(PSIsModal()) << value;
  }
}

TEST_F(HostVersionIsModal, AsksEachTime) {
  PSIsModal();
  PSIsModal();
  const Json line = {{"t", 0},        {"what", "property"}, {"signature", "8BIM"},
                     {"key", "aism"}, {"index", 0},         {"result", 0}};
  EXPECT_EQ(machine.lines("property"), (std::vector<Json>{line, line}));
}

TEST_F(HostVersionIsModal, ReturnsTrueIfTheCallFails) {
  theHost().setModal(0);
  theFaults().add({"Property.GetSimple", -30901, 0, 1});
  EXPECT_TRUE(PSIsModal());
  EXPECT_FALSE(PSIsModal());
}

TEST_F(HostVersionIsModal, PassesNoHandleAndUsesAValueReturnedWithAnError) {
  sPSProperty.AcquireSuite(true);
  const PropertyProcs* host = sPSProperty.suite;
  PropertyProcs procs = *host;
  procs.getPropertyProc = [](PIType, PIType, std::int32_t, std::intptr_t* value,
                             Handle* complex) -> OSErr {
    EXPECT_EQ(*value, 1);
    EXPECT_EQ(complex, nullptr);
    *value = 0;
    return -1;
  };
  sPSProperty.suite = &procs;
  EXPECT_FALSE(PSIsModal());
  sPSProperty.suite = host;
}

TEST_F(HostVersionIsModal, ReturnsTrueIfTheRecordHasNoProcedureToAsk) {
  theHost().setModal(0);
  AlteredSuite procs(sPSProperty);
  procs->getPropertyProc = nullptr;
  EXPECT_TRUE(PSIsModal());
}

TEST_F(HostVersionIsModal, ThrowsIfTheSuiteCannotBeAcquired) {
  theFaults().add({"Basic.AcquireSuite", -5, 0, 1});
  EXPECT_THROW(PSIsModal(), std::uint32_t);
}

}  // namespace
