// makersrc DESCRIPTION OUT: writes the host-side description of a plug-in as a resource file.
#include <cstdio>
#include <exception>
#include <memory>
#include <string>

#include "packaging/resource/HostDescription.h"

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::string readFile(const char* path) {
  const File file(std::fopen(path, "rb"), &std::fclose);
  if (!file) throw ResourceError(std::string(path) + " cannot be read");
  std::string text;
  for (int c = std::fgetc(file.get()); c != EOF; c = std::fgetc(file.get())) {
    text += static_cast<char>(c);
  }
  return text;
}

void writeFile(const char* path, const std::string& bytes) {
  const File file(std::fopen(path, "wb"), &std::fclose);
  if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size() ||
      std::fflush(file.get()) != 0) {
    throw ResourceError(std::string(path) + " cannot be written");
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fprintf(stderr, "usage: makersrc DESCRIPTION OUT\n");
    return 2;
  }
  try {
    writeFile(arguments[2], writeResourceFork({parseHostDescription(readFile(arguments[1]))}));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", arguments[1], error.what());
    return 1;
  }
}
