#include "mac/Options.h"

#include <map>

namespace mrvmac {

Options parseOptions(const std::vector<std::string>& arguments, const std::string& folder) {
  Options options;
  options.bundle = folder + "/MrvPhotoshop.plugin";
  options.scenario = folder + "/probe.json";
  options.expected = folder + "/probe.expected.jsonl";
  const std::map<std::string, std::string*> files = {{"--bundle", &options.bundle},
                                                     {"--scenario", &options.scenario},
                                                     {"--expected", &options.expected},
                                                     {"--report", &options.report}};
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const auto file = files.find(*argument);
    if (*argument == "--help") {
      options.help = true;
    } else if (*argument == "--no-questions") {
      options.ask = false;
    } else if (file == files.end()) {
      throw BadOptions("unknown option " + *argument + "; mrvmac --help lists the options");
    } else if (++argument == arguments.end()) {
      throw BadOptions(file->first + ": a file must follow");
    } else {
      *file->second = *argument;
    }
  }
  return options;
}

const char* help() {
  return "mrvmac [OPTION...]: tests on this Mac what the plug-in believes about the system\n"
         "  --bundle FILE      the plug-in (MrvPhotoshop.plugin beside this program)\n"
         "  --scenario FILE    what the device does (probe.json beside this program)\n"
         "  --expected FILE    the simulated Mac's log of it (probe.expected.jsonl)\n"
         "  --report FILE      where the report goes (mrvmac-report.txt)\n"
         "  --no-questions     do not ask for the permission to synthesize input\n"
         "  --help             this text\n";
}

}  // namespace mrvmac
