#include "tests/support/Machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace testing_support {

using namespace simulator;

Machine::Machine() {
  sSPBasic = theHost().basicSuite();
  std::filesystem::create_directories(preferences());
  setHomeFolder(home_.path());
  theLog().setSink([this](const Json& line) { lines_.push_back(line); });
}

Machine::~Machine() {
  reportAllLeaks();
  std::vector<std::string> misuses;
  for (const Json& line : lines("misuse")) misuses.push_back(line["text"]);
  EXPECT_THAT(misuses, expectedMisuses_);
  // Those that came while a test had taken the log away are only counted.
  EXPECT_EQ(theLog().misuses(), static_cast<int>(misuses.size()));
  theLog().setSink({});
}

std::vector<Json> Machine::lines(const std::string& what) const {
  std::vector<Json> found;
  std::copy_if(lines_.begin(), lines_.end(), std::back_inserter(found),
               [&](const Json& line) { return line["what"] == what; });
  return found;
}

std::vector<Json> Machine::drain() {
  std::vector<Json> fresh(lines_.begin() + static_cast<std::ptrdiff_t>(drained_), lines_.end());
  drained_ = lines_.size();
  return fresh;
}

std::filesystem::path Machine::preferences() const { return preferencesFolder(home_.path()); }

Json eventTypes(const std::vector<std::pair<std::string, int>>& types) {
  Json list = Json::array();
  for (const auto& [eventClass, kind] : types) list.push_back(Json::array({eventClass, kind}));
  return list;
}

int failEachHostCall(std::int32_t error, const std::function<Outcome()>& call,
                     const std::function<void(int n, const Outcome&)>& check) {
  for (int n = 0;; ++n) {
    theFaults().clear();
    theFaults().add({"*", error, static_cast<std::uint64_t>(n), 1});
    Outcome outcome = call();
    const bool fired = theFaults().fired() > 0;
    outcome.failed = theFaults().lastFired();
    theFaults().clear();
    EXPECT_EQ(theHost().objectsOwned(), 0U) << "after call " << n << " failed";
    if (!fired) {
      EXPECT_FALSE(outcome.threw);
      EXPECT_EQ(outcome.result, 0);
      return n;
    }
    check(n, outcome);
  }
}

}  // namespace testing_support
