// Writes the manual page and the shells' completions, as part of the build:
//   mrvsim_pages VERSION FOLDER
#include <cstdio>
#include <fstream>
#include <string>

#include "mrvsim/CommandLine.h"
#include "mrvsim/Completions.h"
#include "mrvsim/ManualPage.h"

namespace {

bool write(const std::string& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (stream) return true;
  std::fprintf(stderr, "mrvsim_pages: %s cannot be written\n", file.c_str());
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: mrvsim_pages VERSION FOLDER\n", stderr);
    return 2;
  }
  const auto commands = simulator::describeCommands();
  const std::string folder = std::string(argv[2]) + "/";
  const bool done = write(folder + "mrvsim.1", simulator::manualPage(commands, argv[1])) &&
                    write(folder + "mrvsim.bash", simulator::bashCompletion(commands)) &&
                    write(folder + "_mrvsim", simulator::zshCompletion(commands));
  return done ? 0 : 1;
}
