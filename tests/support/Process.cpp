#include "tests/support/Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

namespace testing_support {

namespace {

void check(int error, const std::string& what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  path_ = (std::filesystem::temp_directory_path() / "mrvtest-XXXXXX").string();
  if (mkdtemp(path_.data()) == nullptr) check(errno, path_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string readFile(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

void writeFile(const std::string& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}

Finished run(const std::vector<std::string>& command) {
  const TemporaryFolder folder;
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const std::string output = folder.file("output");
  const std::string errors = folder.file("errors");
  constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, output.c_str(), kWrite, 0600);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, errors.c_str(), kWrite, 0600);
  pid_t process = 0;
  check(posix_spawnp(&process, arguments[0], &files, nullptr, arguments.data(), environ),
        command[0]);
  posix_spawn_file_actions_destroy(&files);
  int status = 0;
  waitpid(process, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(output), readFile(errors)};
}

}  // namespace testing_support
