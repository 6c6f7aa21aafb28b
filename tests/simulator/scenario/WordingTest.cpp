#include <gtest/gtest.h>

#include "simulator/scenario/Wording.h"

namespace {

using namespace simulator;

TEST(Wording, KeepsPrintableTextAsItIs) {
  EXPECT_EQ(printable("a b~"), "a b~");
  EXPECT_EQ(printable("Pinsel\u00e4nderung \u65e5\u672c"), "Pinsel\u00e4nderung \u65e5\u672c");
  EXPECT_EQ(printable(""), "");
}

TEST(Wording, EscapesWhatATerminalWouldObey) {
  EXPECT_EQ(printable("a\033[31mb"), "a\\x1B[31mb");
  EXPECT_EQ(printable("a\nb\tc\x7F"), "a\\nb\\tc\\x7F");
  EXPECT_EQ(printable(std::string_view("\0", 1)), "\\x00");
  EXPECT_EQ(printable("\u009b31m"), "\\xC2\\x9B31m");
  EXPECT_EQ(printable("\u202egnp\u2066\u2028"), "\\xE2\\x80\\xAEgnp\\xE2\\x81\\xA6\\xE2\\x80\\xA8");
}

TEST(Wording, EscapesBytesThatAreNotUtf8) {
  EXPECT_EQ(printable("\xFF"), "\\xFF");
  EXPECT_EQ(printable("a\xC3"), "a\\xC3");
  EXPECT_EQ(printable("\xC0\xAF"), "\\xC0\\xAF");
  EXPECT_EQ(printable("\xED\xA0\x80"), "\\xED\\xA0\\x80");
}

TEST(Wording, CutsTheMiddleOutOfLongText) {
  EXPECT_EQ(printable("0123456789", 10), "0123456789");
  EXPECT_EQ(printable("0123456789ab", 10), "01234...789ab");
  EXPECT_EQ(printable(std::string(1000000, 'x'), 4), "xx...xx");
  EXPECT_EQ(printable("\u00e4\u00e4\u00e4\u00e4\u00e4", 4), "\u00e4\u00e4...\u00e4\u00e4");
}

TEST(Wording, GuessesWhatWasMeant) {
  const std::vector<std::string> names = {"active", "axes", "brush", "button", "steps"};
  EXPECT_EQ(nearest("axis", names), "axes");
  EXPECT_EQ(nearest("stpes", names), "steps");
  EXPECT_EQ(nearest("BUTTON", names), "button");
  EXPECT_EQ(nearest("activ", names), "active");
  EXPECT_EQ(nearest("twist", names), "");
  EXPECT_EQ(nearest("", names), "");
  EXPECT_EQ(nearest(std::string(1000, 'a'), names), "");
}

TEST(Wording, PrefersTheNameThatDiffersInCaseAlone) {
  EXPECT_EQ(nearest("ActionControl.get", {"ActionControl.Set", "ActionControl.Get"}),
            "ActionControl.Get");
}

TEST(Wording, AsksOnlyIfThereIsAGuess) {
  EXPECT_EQ(guess("axis", {"axes"}), "; did you mean \"axes\"?");
  EXPECT_EQ(guess("twist", {"axes"}), "");
}

TEST(Wording, CountsOneAndMany) {
  EXPECT_EQ(counted(0, "tick"), "0 ticks");
  EXPECT_EQ(counted(1, "tick"), "1 tick");
  EXPECT_EQ(counted(2, "tick"), "2 ticks");
}

TEST(Wording, ListsNames) {
  EXPECT_EQ(listed({}), "");
  EXPECT_EQ(listed({"a"}), "a");
  EXPECT_EQ(listed({"a", "b"}), "a and b");
  EXPECT_EQ(listed({"a", "b", "c"}), "a, b and c");
}

}  // namespace
