#include "tests/mrvsim/Cases.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace testing_support {

namespace {

using simulator::Json;

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// The bytes of a file of a case: a text, or a list of texts and of numbers that are bytes.
std::string bytesOf(const Json& content) {
  if (content.is_string()) return content;
  std::string bytes;
  for (const Json& part : content) {
    part.is_string() ? bytes += part.get<std::string>()
                     : bytes += static_cast<char>(part.get<int>());
  }
  return bytes;
}

void redirect(const std::string& file, int flags, int descriptor) {
  const int opened = open(file.c_str(), flags, 0600);
  if (opened < 0 || dup2(opened, descriptor) < 0) _exit(99);
}

[[noreturn]] void exec(const Json& description, const CaseFolder& folder) {
  std::vector<std::string> words = {MRVSIM};
  for (const Json& word : description["arguments"]) words.push_back(folder.expanded(word));
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  setenv("TMPDIR", folder.temporary().c_str(), 1);
  const Json environment = description.value("environment", Json::object());
  for (const auto& [name, value] : environment.items()) {
    value.is_null() ? unsetenv(name.c_str())
                    : setenv(name.c_str(), folder.expanded(value).c_str(), 1);
  }
  constexpr int kWrite = O_WRONLY | O_CREAT;
  redirect(description.contains("input") ? folder.file("../input") : "/dev/null", O_RDONLY, 0);
  redirect(folder.expanded(description.value("stdout", folder.file("../output"))),
           kWrite | O_APPEND, 1);
  redirect(folder.file("../errors"), kWrite, 2);
  const Json closed = description.value("closed", Json::array());
  for (const Json& descriptor : closed) {
    close(descriptor.get<int>());
  }
  if (chdir(folder.file("").c_str()) != 0) _exit(99);
  if (description.contains("fileSizeLimit")) {
    const rlim_t size = description["fileSizeLimit"];
    const rlimit limit = {size, size};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  if (description.contains("dataLimit")) {
    const rlim_t size = description["dataLimit"];
    const rlimit limit = {size, size};
    setrlimit(RLIMIT_DATA, &limit);
  }
  execv(arguments[0], arguments.data());
  _exit(99);
}

}  // namespace

CaseFolder::CaseFolder() {
  std::filesystem::create_directory(file(""));
  std::filesystem::create_directory(temporary());
}

std::vector<std::pair<std::string, std::string>> CaseFolder::names() const {
  return {{"{dir}", folder_.file("dir")}, {"{tmp}", temporary()},
          {"{scenarios}", MRV_SCENARIOS}, {"{plugin}", MODULE},
          {"{misbehaves}", MISBEHAVES},   {"{failingcalls}", FAILING_CALLS}};
}

std::string CaseFolder::expanded(std::string text) const {
  for (const auto& [name, path] : names()) text = replaced(std::move(text), name, path);
  return text;
}

std::string CaseFolder::shortened(std::string text) const {
  for (const auto& [name, path] : names()) text = replaced(std::move(text), path, name);
  return text;
}

std::vector<std::string> CaseFolder::files() const { return namesIn(file("")); }

std::vector<std::string> CaseFolder::leftovers() const { return namesIn(temporary()); }

pid_t start(const Json& description, const CaseFolder& folder) {
  const Json files = description.value("files", Json::object());
  for (const auto& [name, content] : files.items()) {
    writeFile(folder.file(name), folder.expanded(bytesOf(content)));
  }
  if (description.contains("input")) {
    writeFile(folder.file("../input"), bytesOf(description["input"]));
  }
  const pid_t process = fork();
  if (process == 0) exec(description, folder);
  return process;
}

Finished finish(pid_t process, const Json& description, const CaseFolder& folder) {
  int status = 0;
  EXPECT_EQ(waitpid(process, &status, 0), process);
  Finished finished;
  finished.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  finished.errors = folder.shortened(readFile(folder.file("../errors")));
  if (!description.contains("stdout")) {
    finished.output = folder.shortened(readFile(folder.file("../output")));
  }
  return finished;
}

bool isAnyProcessLeft() { return waitpid(-1, nullptr, WNOHANG) >= 0; }

void adoptOrphans() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

}  // namespace testing_support
