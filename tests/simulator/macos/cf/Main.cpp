// Writes the answers of the Core Foundation with which it is linked. README.md has the command.
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "Questions.h"

int main() {
  if (chdir(kWorkingFolder) != 0) {
    std::perror(kWorkingFolder);
    return 1;
  }
  for (const auto& answers : {answersAboutLengths(), answersAboutMacRoman(), answersAboutStrings(),
                              answersAboutPaths()}) {
    for (const std::string& line : answers) std::puts(line.c_str());
  }
  return 0;
}
