#include "mrvsim/CheckCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "simulator/check/Check.h"
#include "simulator/check/ChildProcess.h"

namespace simulator {

namespace {

constexpr int kAllPassed = 0;
constexpr int kNotAllPassed = 1;
constexpr int kCannotCheck = 2;

struct Report {
  Check check;
  Verdict verdict;
};

std::vector<Check> chosen(const std::vector<std::string>& only) {
  if (only.empty()) return allChecks();
  std::vector<Check> checks;
  for (const std::string& name : only) {
    const auto found = std::find_if(allChecks().begin(), allChecks().end(),
                                    [&](const Check& check) { return check.name == name; });
    if (found == allChecks().end()) throw std::runtime_error("there is no check " + name);
    checks.push_back(*found);
  }
  return checks;
}

Verdict judge(const Check& check, const std::string& plugin) {
  try {
    const Json answer = inChildProcess([&] {
      const Verdict verdict = check.run(plugin);
      return Json{{"outcome", verdict.outcome}, {"reason", verdict.reason}};
    });
    return {answer["outcome"].get<Outcome>(), answer["reason"]};
  } catch (const std::exception& error) {
    return failed(error.what());
  }
}

std::ptrdiff_t count(const std::vector<Report>& reports, Outcome outcome) {
  return std::count_if(reports.begin(), reports.end(),
                       [&](const Report& report) { return report.verdict.outcome == outcome; });
}

void printList(const std::vector<Check>& checks) {
  for (const Check& check : checks) fmt::print("{:<18} {}\n", check.name, check.sentence);
}

void printTable(const std::vector<Report>& reports) {
  for (const auto& [check, verdict] : reports) {
    fmt::print("{:<18} {}{}{}\n", check.name, outcomeName(verdict.outcome),
               verdict.reason.empty() ? "" : ": ", verdict.reason);
  }
  fmt::print("{} checks: {} passed, {} failed, {} not applicable\n", reports.size(),
             count(reports, Outcome::kPassed), count(reports, Outcome::kFailed),
             count(reports, Outcome::kNotApplicable));
}

void printJson(const std::string& plugin, const std::vector<Report>& reports) {
  Json all = Json::array();
  for (const auto& [check, verdict] : reports) {
    all.push_back({{"name", check.name},
                   {"sentence", check.sentence},
                   {"result", outcomeName(verdict.outcome)},
                   {"reason", verdict.reason}});
  }
  const Json report = {{"plugin", plugin},
                       {"checks", all},
                       {"passed", count(reports, Outcome::kPassed)},
                       {"failed", count(reports, Outcome::kFailed)}};
  fmt::print("{}\n", report.dump(2, ' ', false, Json::error_handler_t::replace));
}

int check(const CheckOptions& options) {
  const std::vector<Check> checks = chosen(options.only);
  if (options.list) {
    printList(checks);
    return kAllPassed;
  }
  if (!std::filesystem::exists(options.plugin)) {
    throw std::runtime_error(options.plugin + " is not there");
  }
  std::vector<Report> reports;
  for (const Check& one : checks) reports.push_back({one, judge(one, options.plugin)});
  options.json ? printJson(options.plugin, reports) : printTable(reports);
  const bool good = count(reports, Outcome::kFailed) == 0 && count(reports, Outcome::kPassed) > 0;
  return good ? kAllPassed : kNotAllPassed;
}

}  // namespace

int runCheck(const CheckOptions& options) {
  try {
    return check(options);
  } catch (const std::exception& error) {
    fmt::print(stderr, "mrvsim: {}\n", error.what());
    return kCannotCheck;
  }
}

}  // namespace simulator
