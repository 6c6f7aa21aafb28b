#include "mrvsim/ReportCommand.h"

#include <fmt/format.h>

#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "mrvsim/report/LogEntry.h"
#include "mrvsim/report/Report.h"
#include "simulator/scenario/InputFile.h"

namespace simulator {

namespace {

void readLog(const InputFile& input, Report& report) {
  eachLine(input, [&](std::string_view text, std::uint64_t number) {
    try {
      report.line(text);
    } catch (const BadLogEntry& error) {
      throw BadInput(
          fmt::format("{}:{}:{}: {}", input.name(), number, error.column(), error.what()));
    }
  });
}

}  // namespace

int runReport(const std::string& log, const std::string& file) {
  Output out(file);
  out.expectNoneOf({log});
  Report report;
  readLog(InputFile(log), report);
  out.open();
  report.write([&](std::string_view text) { out.write(text); });
  out.commit();
  return kDone;
}

}  // namespace simulator
