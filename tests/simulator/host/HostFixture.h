// A fixture that acquires every suite of the host and collects its log.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/host/ASZStringSuite.h"
#include "platform/host/HostTerms.h"
#include "platform/host/PIActions.h"
#include "platform/host/PIAliasSuite.h"
#include "platform/host/PIHandleSuite.h"
#include "platform/host/PIProperties.h"
#include "simulator/base/Faults.h"
#include "simulator/host/Host.h"
#include "simulator/host/model/HostErrors.h"

namespace simulator {

class HostTest : public testing::Test {
 protected:
  HostTest() {
    theLog().setSink([this](const Json& line) { lines_.push_back(line); });
    acquire(descriptors_, kPSActionDescriptorSuite, kPSActionDescriptorSuiteVersion);
    acquire(lists_, kPSActionListSuite, kPSActionListSuiteVersion);
    acquire(references_, kPSActionReferenceSuite, kPSActionReferenceSuiteVersion);
    acquire(control_, kPSActionControlSuite, kPSActionControlSuiteVersion);
    acquire(handles_, kPSHandleSuite, kPSHandleSuiteVersion2);
    acquire(strings_, kASZStringSuite, kASZStringSuiteVersion1);
    acquire(properties_, kPSPropertySuite, kPSPropertySuiteVersion);
    acquire(aliases_, kPSAliasSuite, kPSAliasSuiteVersion);
    lines_.clear();
  }

  ~HostTest() override {
    theHost().reportLeaks();
    EXPECT_EQ(theLog().misuses(), misusesExpected_) << Json(lines_).dump(1);
    theLog().setSink({});
  }

  template <class T>
  void acquire(const T*& suite, const char* name, int32 version) {
    const void* table = nullptr;
    ASSERT_EQ(theHost().basicSuite()->AcquireSuite(name, version, &table), 0) << name;
    suite = static_cast<const T*>(table);
  }

  // Objects that the test owns: they do not count as leaks.
  PIActionDescriptor descriptorOf(std::string_view json) {
    return theHost().makeDescriptor(descriptorFromJson(jsonOf(json), theHost().typeIds()));
  }
  PIActionList listOf(std::string_view json) {
    return theHost().makeList(listFromJson(jsonOf(json), theHost().typeIds()));
  }
  PIActionReference referenceOf(std::string_view json) {
    return theHost().makeReference(referenceFromJson(jsonOf(json), theHost().typeIds()));
  }

  std::string textOf(PIActionDescriptor descriptor) {
    return descriptorToJson(*theHost().contentOf(descriptor), theHost().typeIds()).dump();
  }
  std::string textOf(PIActionList list) {
    return listToJson(*theHost().contentOf(list), theHost().typeIds()).dump();
  }
  std::string textOf(PIActionReference reference) {
    return referenceToJson(theHost().contentOf(reference), theHost().typeIds()).dump();
  }

  /// The texts of all misuses since the last call, which then count as expected.
  std::vector<std::string> misuses() {
    std::vector<std::string> texts;
    for (const Json& line : lines_) {
      if (line["what"] == "misuse") texts.push_back(line["text"].get<std::string>());
    }
    lines_.clear();
    misusesExpected_ += static_cast<int>(texts.size());
    return texts;
  }

  const PSActionDescriptorProcs* descriptors_ = nullptr;
  const PSActionListProcs* lists_ = nullptr;
  const PSActionReferenceProcs* references_ = nullptr;
  const PSActionControlProcs* control_ = nullptr;
  const PSHandleSuite2* handles_ = nullptr;
  const ASZStringSuite* strings_ = nullptr;
  const PropertyProcs* properties_ = nullptr;
  const PSAliasSuite* aliases_ = nullptr;
  std::vector<Json> lines_;

 private:
  int misusesExpected_ = 0;
};

}  // namespace simulator
