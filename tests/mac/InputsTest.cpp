#include <gtest/gtest.h>

#include "mac/Inputs.h"
#include "tests/mac/ProbeInputs.h"
#include "tests/support/Process.h"

namespace {

using namespace mrvmac;

constexpr char kWheelLine[] =
    R"({"t":0,"what":"wheel","units":0,"wheels":[0,-8],"flags":1572864,"location":[1.0,2.0]})";

Input wheel(std::int64_t vertical, std::int64_t horizontal, std::uint64_t flags) {
  return {.vertical = vertical, .horizontal = horizontal, .flags = flags};
}

Input key(std::uint32_t code, bool down, InputKind kind = InputKind::kKey) {
  return {.kind = kind, .key = code, .down = down};
}

TEST(ExpectedInputs, AreTheTicksAndKeysOfALog) {
  const std::string log = std::string(kWheelLine) + "\n" +
                          R"({"t":0,"what":"result","value":0})"
                          "\n"
                          R"({"t":1,"what":"key","key":58,"down":true,"type":10,"tap":1})"
                          "\n"
                          R"({"t":2,"what":"posted","class":"keyb","kind":3,"priority":2,)"
                          R"("parameters":[["kcod","magn",33],["kmod","magn",0]]})"
                          "\n"
                          R"({"t":3,"what":"posted","class":"mrvE","kind":2,"parameters":[]})";
  const std::vector<Input> expected = {wheel(0, -8, kOptionFlag | kCommandFlag), key(58, true),
                                       key(33, false, InputKind::kTypedKey)};
  EXPECT_EQ(parseExpectedInputs(log, "log"), expected);
}

TEST(ExpectedInputs, KeepOnlyTheModifiersOfTheFlags) {
  const std::string log = R"({"what":"wheel","wheels":[1],"flags":524544})";
  EXPECT_EQ(parseExpectedInputs(log, "log"), std::vector<Input>{wheel(1, 0, kOptionFlag)});
}

TEST(ExpectedInputs, OfTheProbeHaveEveryKind) {
  const std::vector<Input> inputs = probeInputs();
  EXPECT_EQ(only(inputs, InputKind::kWheel).size(), 20U);
  EXPECT_EQ(only(inputs, InputKind::kKey).size(), 16U);
  EXPECT_EQ(only(inputs, InputKind::kTypedKey).size(), 4U);
}

TEST(ExpectedInputs, OfTheProbeAreWhatTheSimulatedMacGives) {
  const testing_support::Finished played =
      testing_support::run({MRVSIM, "play", MRV_MAC "/probe.json"});
  EXPECT_EQ(played.status, 0) << played.errors;
  EXPECT_EQ(parseExpectedInputs(played.output, "output"), probeInputs());
}

std::string logErrorOf(const std::string& log) {
  try {
    parseExpectedInputs(log, "log");
  } catch (const BadLog& error) {
    return error.what();
  }
  return "none";
}

TEST(ExpectedInputs, NameTheLineThatIsNotALogLine) {
  constexpr char kReason[] = "not a line of a log that mrvsim play wrote";
  EXPECT_EQ(logErrorOf(std::string(kWheelLine) + "\n{"), std::string("log:2: ") + kReason);
  EXPECT_EQ(logErrorOf("[]"), std::string("log:1: ") + kReason);
  EXPECT_EQ(logErrorOf(R"({"what":"wheel","wheels":[]})"), std::string("log:1: ") + kReason);
  EXPECT_EQ(logErrorOf(R"({"what":"key","key":"a","down":true})"),
            std::string("log:1: ") + kReason);
  EXPECT_EQ(logErrorOf(""), "log: the log is empty");
}

TEST(Inputs, AreDescribedInAFewWords) {
  EXPECT_EQ(describe(wheel(1, 0, kOptionFlag)), "wheel 1 0 with option");
  EXPECT_EQ(describe(wheel(0, -8, kOptionFlag | kCommandFlag)),
            "wheel 0 -8 with option with command");
  EXPECT_EQ(describe(key(58, true)), "key 58 down");
  EXPECT_EQ(describe(key(33, false, InputKind::kTypedKey)), "typed key 33 up");
}

TEST(Inputs, AreChosenByKind) {
  const std::vector<Input> inputs = {wheel(1, 0, 0), key(58, true), wheel(2, 0, 0)};
  EXPECT_EQ(only(inputs, InputKind::kWheel), (std::vector{inputs[0], inputs[2]}));
  EXPECT_EQ(without(inputs, InputKind::kWheel), std::vector{inputs[1]});
}

TEST(InputComparison, FindsEqualInputsEqual) {
  EXPECT_TRUE(compareInputs(probeInputs(), probeInputs()).equal);
  EXPECT_EQ(compareInputs(probeInputs(), probeInputs()).difference, "");
  EXPECT_TRUE(compareInputs({}, {}).equal);
}

TEST(InputComparison, NamesTheFirstDifference) {
  const std::vector<Input> expected = {wheel(1, 0, 0), wheel(2, 0, 0)};
  const Comparison comparison = compareInputs(expected, {wheel(1, 0, 0), key(58, true)});
  EXPECT_FALSE(comparison.equal);
  EXPECT_EQ(comparison.difference, "input 2 of 2: expected wheel 2 0, arrived key 58 down");
}

TEST(InputComparison, SaysWhatIsMissingAndWhatIsTooMuch) {
  const std::vector<Input> one = {wheel(1, 0, 0)};
  EXPECT_EQ(compareInputs(one, {}).difference, "input 1 of 1: expected wheel 1 0, arrived nothing");
  EXPECT_EQ(compareInputs({}, one).difference, "input 1 of 0: expected nothing, arrived wheel 1 0");
}

}  // namespace
