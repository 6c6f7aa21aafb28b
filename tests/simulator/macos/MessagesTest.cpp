// Messages to objects: arguments and results of every kind, and receivers that do not answer.
#include <CoreGraphics/CoreGraphics.h>
#include <gtest/gtest.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/macos/ObjcRuntime.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

struct Echo {
  static std::int64_t sum(id, SEL, std::int64_t a, std::int64_t b, std::int64_t c, std::int64_t d,
                          std::int64_t e, std::int64_t f) {
    return a + 10 * b + 100 * c + 1000 * d + 10'000 * e + 100'000 * f;
  }
  static double mean(id, SEL, double a, double b, double c, double d, double e, double f, double g,
                     double h) {
    return (a + b + c + d + e + f + g + h) / 8;
  }
  static CGPoint point(id, SEL, CGPoint from, double scale) {
    return {from.x * scale, from.y * scale};
  }
  static CGRect rect(id, SEL, CGRect from, std::int32_t by) {
    return {{from.origin.x + by, from.origin.y + by}, from.size};
  }
  static BOOL isItself(id self, SEL selector, id other, SEL named) {
    return self == other && selector == named;
  }
};

class Messages : public testing::Test {
 protected:
  Messages() {
    addMethod(class_, "sum::::::", &Echo::sum);
    addMethod(class_, "mean::::::::", &Echo::mean);
    addMethod(class_, "point::", &Echo::point);
    addMethod(class_, "rect::", &Echo::rect);
    addMethod(class_, "isItself::", &Echo::isItself);
  }

  template <class Result, class... Arguments>
  static Result send(id receiver, const char* selector, Arguments... arguments) {
    return reinterpret_cast<Result (*)(id, SEL, Arguments...)>(&objc_msgSend)(
        receiver, sel_registerName(selector), arguments...);
  }

  /// On 64-bit Intel the result is in memory.
  template <class... Arguments>
  static CGRect sendForRect(id receiver, const char* selector, Arguments... arguments) {
#if defined(__x86_64__)
    constexpr auto kSend = &objc_msgSend_stret;
#else
    constexpr auto kSend = &objc_msgSend;
#endif
    return reinterpret_cast<CGRect (*)(id, SEL, Arguments...)>(kSend)(
        receiver, sel_registerName(selector), arguments...);
  }

  testing_support::Machine machine_;
  objc_class class_ = {nullptr, "Echo", {}};
  objc_object object_ = {&class_};
  id echo_ = &object_;
};

TEST_F(Messages, PassTheReceiverAndTheSelector) {
  const SEL selector = sel_registerName("isItself::");
  EXPECT_TRUE((send<BOOL>(echo_, "isItself::", echo_, selector)));
  EXPECT_FALSE((send<BOOL>(echo_, "isItself::", id{nullptr}, selector)));
}

TEST_F(Messages, PassIntegersInRegistersAndOnTheStack) {
  EXPECT_EQ((send<std::int64_t, std::int64_t, std::int64_t, std::int64_t, std::int64_t,
                  std::int64_t, std::int64_t>(echo_, "sum::::::", 1, 2, 3, 4, 5, 6)),
            654321);
  EXPECT_EQ((send<std::int64_t, std::int64_t, std::int64_t, std::int64_t, std::int64_t,
                  std::int64_t, std::int64_t>(echo_, "sum::::::", INT64_MIN, 0, 0, 0, 0, 0)),
            INT64_MIN);
}

TEST_F(Messages, PassDoublesInAllEightRegisters) {
  EXPECT_EQ((send<double>(echo_, "mean::::::::", 0.5, 1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 7.5)), 4.0);
}

TEST_F(Messages, PassAndReturnPoints) {
  const auto point = send<CGPoint>(echo_, "point::", CGPoint{1.5, -2.5}, 2.0);
  EXPECT_EQ(point.x, 3.0);
  EXPECT_EQ(point.y, -5.0);
}

TEST_F(Messages, PassAndReturnRectangles) {
  const CGRect rect =
      sendForRect(echo_, "rect::", CGRect{{1.5, -2.5}, {30.25, 40.75}}, std::int32_t{-2});
  EXPECT_EQ(rect.origin.x, -0.5);
  EXPECT_EQ(rect.origin.y, -4.5);
  EXPECT_EQ(rect.size.width, 30.25);
  EXPECT_EQ(rect.size.height, 40.75);
}

TEST_F(Messages, ToNullReturnZero) {
  EXPECT_EQ((send<std::int64_t, std::int64_t, std::int64_t, std::int64_t, std::int64_t,
                  std::int64_t, std::int64_t>(nullptr, "sum::::::", 1, 2, 3, 4, 5, 6)),
            0);
  EXPECT_EQ((send<double>(nullptr, "mean::::::::", 1., 1., 1., 1., 1., 1., 1., 1.)), 0.0);
  const auto point = send<CGPoint>(nullptr, "point::", CGPoint{1.5, -2.5}, 2.0);
  EXPECT_EQ(point.x, 0.0);
  EXPECT_EQ(point.y, 0.0);
  EXPECT_FALSE((send<BOOL>(nullptr, "noSuchMessage")));
}

TEST_F(Messages, ThatAreUnknownAreMisusesAndReturnZero) {
  EXPECT_EQ((send<std::int64_t>(echo_, "sum")), 0);
  EXPECT_EQ((send<double>(echo_, "Sum::::::", 1.0)), 0.0);
  machine_.expectMisuses(testing::ElementsAre("Echo does not understand 'sum'",
                                              "Echo does not understand 'Sum::::::'"));
}

TEST_F(Messages, ToAFreedObjectAreMisusesAndThoseToItsClassmateAreNot) {
  objc_object mate = {&class_};
  freeObject(object_);
  EXPECT_EQ((send<double>(echo_, "mean::::::::", 8., 0., 0., 0., 0., 0., 0., 0.)), 0.0);
  EXPECT_EQ((send<double>(&mate, "mean::::::::", 8., 0., 0., 0., 0., 0., 0., 0.)), 1.0);
  machine_.expectMisuse(testing::StrEq("message 'mean::::::::' to a freed Echo"));
}

TEST_F(Messages, HaveOneSelectorForEachName) {
  const std::string name = "sum::::::";
  EXPECT_EQ(sel_registerName(name.c_str()), selectorOf("sum::::::"));
  EXPECT_NE(selectorOf("sum"), selectorOf("sum:"));
}

TEST_F(Messages, ReachClassesThatWereRegistered) {
  EXPECT_EQ(objc_getClass("Registered"), nullptr);
  static objc_class registered = {nullptr, "Registered", {}};
  registerClass(registered);
  EXPECT_EQ(objc_getClass("Registered"), &registered);
}

}  // namespace
