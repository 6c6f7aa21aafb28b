// What a sample of device motion costs in the bundle's own code, counted in instructions.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "tests/packaging/Callgrind.h"
#include "tests/support/Process.h"

namespace {

using testing_support::countInPlay;
using testing_support::Counts;
using testing_support::readFile;

const std::string kPush = R"(, {"axes": [0, 100, 0, 0, 0, 0]})";
const std::string kRedraw = R"(, {"refresh": [[100, 50, 800, 600]]})";

/// The counts of a play in which one sample ticks, followed by `steps` so many times.
Counts afterATick(const std::string& steps, int times) {
  std::string text = R"({"steps": [{"call": ["SP Interface", "Startup"]})" + kPush;
  for (int i = 0; i < times; ++i) text += steps;
  return countInPlay(text + "]}");
}

/// The figure in the table of the benchmarks' document.
std::int64_t written(const std::string& what) {
  const std::string document = readFile(MRV_ROOT "/bench/README.md");
  const std::string row = "\n| " + what + " | ";
  const std::size_t place = document.find(row);
  if (place == document.npos) return 0;
  return std::strtoll(document.c_str() + place + row.size(), nullptr, 10);
}

/// `instructions` must be what is written down, or a twentieth more for another compiler's choices.
/// Much less would be news for the document, or the count would be wrong.
void expectAtMost(std::int64_t instructions, const std::string& what) {
  EXPECT_LE(instructions, written(what) * 105 / 100) << what;
  EXPECT_GE(instructions, written(what) * 3 / 4) << what;
}

TEST(Cost, IsWhatIsWrittenDownAndHoldsNoCallBeyondThePlatform) {
  constexpr int kDropped = 40;
  constexpr int kTicking = 20;
  const Counts none = afterATick("", 0);
  const Counts dropped = afterATick(kPush, kDropped);
  const Counts ticking = afterATick(kRedraw + kPush, kTicking);

  expectAtMost((dropped.instructions - none.instructions) / kDropped, "a sample dropped by pacing");
  expectAtMost((ticking.instructions - none.instructions) / kTicking,
               "a redraw and a sample that ticks");
  // No allocation, and nothing else of the C or C++ library.
  EXPECT_EQ(dropped.callsElsewhere, none.callsElsewhere);
  EXPECT_EQ(ticking.callsElsewhere, none.callsElsewhere);
}

}  // namespace
