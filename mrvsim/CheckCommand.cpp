#include "mrvsim/CheckCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "mrvsim/PluginFile.h"
#include "simulator/check/Check.h"
#include "simulator/check/ChildProcess.h"
#include "simulator/loader/MachFile.h"
#include "simulator/loader/MachPlugin.h"
#include "simulator/loader/PluginModule.h"
#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/InputFile.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

struct JudgedCheck {
  Check check;
  Verdict verdict;
};

[[noreturn]] void failOnName(const std::string& name) {
  std::vector<std::string> names;
  for (const Check& check : allChecks()) names.emplace_back(check.name);
  throw std::runtime_error(fmt::format("--only {}: there is no such check{}; allowed: {}",
                                       printable(name), guess(name, names), listed(names)));
}

std::vector<Check> chosen(const std::vector<std::string>& only) {
  if (only.empty()) return allChecks();
  std::vector<Check> checks;
  for (const std::string& name : only) {
    const auto found = std::find_if(allChecks().begin(), allChecks().end(),
                                    [&](const Check& check) { return check.name == name; });
    if (found == allChecks().end()) failOnName(name);
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
  } catch (const TemporaryFileError&) {
    throw;
  } catch (const std::exception& error) {
    return failed(error.what());
  }
}

std::ptrdiff_t count(const std::vector<JudgedCheck>& reports, Outcome outcome) {
  return std::count_if(reports.begin(), reports.end(), [&](const JudgedCheck& report) {
    return report.verdict.outcome == outcome;
  });
}

std::string listText(const std::vector<Check>& checks) {
  std::string text;
  for (const Check& check : checks) text += fmt::format("{:<18} {}\n", check.name, check.sentence);
  return text;
}

std::string listJson(const std::vector<Check>& checks) {
  Json all = Json::array();
  for (const Check& check : checks) {
    all.push_back({{"name", check.name}, {"sentence", check.sentence}});
  }
  return Json{{"checks", all}}.dump(2) + "\n";
}

std::string row(const JudgedCheck& report) {
  return fmt::format("{:<18} {}{}{}\n", report.check.name, outcomeName(report.verdict.outcome),
                     report.verdict.reason.empty() ? "" : ": ", report.verdict.reason);
}

std::string totals(const std::vector<JudgedCheck>& reports) {
  return fmt::format("{} checks: {} passed, {} failed, {} not applicable\n", reports.size(),
                     count(reports, Outcome::kPassed), count(reports, Outcome::kFailed),
                     count(reports, Outcome::kNotApplicable));
}

std::string asJson(const std::string& plugin, const std::vector<JudgedCheck>& reports) {
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
  return report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

[[noreturn]] void failOnForm(const std::string& plugin, const std::exception& error) {
  throw std::runtime_error(
      fmt::format("{}: is not a plug-in: {}", printableFile(plugin), error.what()));
}

/// Throws if a file for the Mac does not have the form of a plug-in. A bundle whose binary cannot
/// be found has it: that is a fault of its Info.plist, which a check names.
void expectMacPlugin(const std::string& plugin) {
  const bool isBundle = std::filesystem::is_directory(std::filesystem::path(plugin) / "Contents");
  std::string file;
  try {
    file = machFileOf(plugin);
  } catch (const std::exception& error) {
    if (isBundle) return;
    failOnForm(plugin, error);
  }
  try {
    MachFile::open(file);
  } catch (const std::exception& error) {
    failOnForm(plugin, error);
  }
}

/// Throws what is wrong with a file that cannot be a plug-in: a file for the Mac must have the
/// right form, and a module for Linux must load. One that crashes then is a plug-in, and fails.
void expectPlugin(const std::string& plugin) {
  expectPluginFile(plugin);
  if (isMacPlugin(plugin)) {
    expectMacPlugin(plugin);
    return;
  }
  std::string refusal;
  try {
    refusal = inChildProcess([&]() -> Json {
      try {
        loadPlugin(plugin);
      } catch (const std::exception& error) {
        return error.what();
      }
      std::_Exit(0);
    });
  } catch (const std::runtime_error&) {
    return;
  }
  throw std::runtime_error(refusal);
}

int judgeAll(const CheckOptions& options, const std::vector<Check>& checks, Output& out) {
  std::vector<JudgedCheck> reports;
  for (const Check& check : checks) {
    reports.push_back({check, judge(check, options.plugin)});
    if (options.json) continue;
    out.write(row(reports.back()));
    out.flush();
  }
  out.write(options.json ? asJson(options.plugin, reports) : totals(reports));
  const bool failed = count(reports, Outcome::kFailed) > 0;
  const bool passed = count(reports, Outcome::kPassed) > 0;
  if (!failed && !passed) {
    complain(fmt::format("{}: none of the checks applies to this plug-in",
                         printableFile(options.plugin)));
  }
  return passed && !failed ? kDone : kFoundFaults;
}

}  // namespace

int runCheck(const CheckOptions& options) {
  const std::vector<Check> checks = chosen(options.only);
  Output out("-");
  int status = kDone;
  if (options.list) {
    out.open();
    out.write(options.json ? listJson(checks) : listText(checks));
  } else {
    // What plug-ins and checks leave in the folder for temporary files goes with it.
    const TemporaryHome folder;
    setenv("TMPDIR", folder.path().c_str(), 1);
    setChildTimeout(options.timeout);
    expectPlugin(options.plugin);
    out.expectNoneOf({options.plugin});
    out.open();
    status = judgeAll(options, checks, out);
  }
  out.commit();
  return status;
}

}  // namespace simulator
