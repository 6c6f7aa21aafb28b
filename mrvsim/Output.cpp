#include "mrvsim/Output.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "simulator/scenario/Interrupts.h"
#include "simulator/scenario/Leftovers.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

constexpr std::size_t kMostHeld = 65536;

/// The descriptor that a name such as "-", "/dev/stdout" or "/dev/fd/3" stands for.
std::optional<int> descriptorOf(const std::string& file) {
  if (file == "-" || file == "/dev/stdout") return STDOUT_FILENO;
  if (file == "/dev/stderr") return STDERR_FILENO;
  for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
    if (!file.starts_with(folder)) continue;
    int number = -1;
    const char* const end = file.data() + file.size();
    const auto [stop, error] = std::from_chars(file.data() + folder.size(), end, number);
    if (error == std::errc() && stop == end && number >= 0) return number;
  }
  return std::nullopt;
}

std::optional<struct stat> statusOf(const std::string& file) {
  struct stat status = {};
  const std::optional<int> descriptor = descriptorOf(file);
  const int result = descriptor ? fstat(*descriptor, &status) : stat(file.c_str(), &status);
  return result == 0 ? std::optional(status) : std::nullopt;
}

std::optional<struct stat> inputStatusOf(const std::string& file) {
  struct stat status = {};
  const int result = file == "-" ? fstat(STDIN_FILENO, &status) : stat(file.c_str(), &status);
  return result == 0 ? std::optional(status) : std::nullopt;
}

/// The file that a chain of symbolic links ends at, which need not exist.
std::filesystem::path endOfLinks(std::filesystem::path path) {
  constexpr int kMostLinks = 40;
  std::error_code error;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(path, error); ++i) {
    const std::filesystem::path next = std::filesystem::read_symlink(path, error);
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return std::filesystem::absolute(path, error).lexically_normal();
}

/// The permissions that the process gives to new files.
mode_t modeOfNewFiles() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

Output::Output(std::string file, Mode mode)
    : file_(std::move(file)),
      name_(file_ == "-" ? "standard output" : printableFile(file_)),
      mode_(mode) {}

Output::~Output() {
  if (!temporary_.empty()) {
    unlink(temporary_.c_str());
    theLeftovers().forget(temporary_);
  }
}

void Output::fail(int error, const std::string& what) const {
  throw BadOutput(fmt::format("{}: {}: {}", name_, what, std::strerror(error)));
}

void Output::expectNoneOf(const std::vector<std::string>& inputs) const {
  const auto own = statusOf(file_);
  if (!own || !S_ISREG(own->st_mode)) return;
  for (const std::string& input : inputs) {
    const auto other = inputStatusOf(input);
    if (!other || other->st_dev != own->st_dev || other->st_ino != own->st_ino) continue;
    throw BadOutput(fmt::format("{}: is an input as well, and no input can be an output", name_));
  }
}

void Output::expectOtherThan(const Output& other) const {
  const auto own = statusOf(file_);
  const auto others = statusOf(other.file_);
  const bool isSame =
      own && others
          ? !S_ISCHR(own->st_mode) && own->st_dev == others->st_dev && own->st_ino == others->st_ino
          : !own && !others && endOfLinks(file_) == endOfLinks(other.file_);
  if (isSame)
    throw BadOutput(fmt::format(
        "{}: is another output as well, and each output needs a file of its own", name_));
}

void Output::open() {
  if (file_.empty()) throw BadOutput("the name of an output file is empty");
  throwIfInterrupted();
  if (const auto descriptor = descriptorOf(file_)) {
    descriptor_ = OpenFile(fcntl(*descriptor, F_DUPFD_CLOEXEC, 3));
    if (descriptor_.get() < 0) fail(errno);
    return;
  }
  const auto status = statusOf(file_);
  if (status && S_ISDIR(status->st_mode)) fail(EISDIR);
  if (!status || S_ISREG(status->st_mode)) {
    target_ = endOfLinks(file_).string();
    openFile();
    return;
  }
  while (descriptor_.get() < 0) {
    descriptor_ = OpenFile(::open(file_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (descriptor_.get() < 0 && errno != EINTR) fail(errno);
    throwIfInterrupted();
  }
}

void Output::openFile() {
  if (mode_ == Mode::kReplace) {
    const auto status = statusOf(target_);
    if (status && access(target_.c_str(), W_OK) != 0) fail(errno);
    openBeside(static_cast<int>(status ? status->st_mode & 07777 : modeOfNewFiles()));
    return;
  }
  constexpr int kAppending = O_WRONLY | O_APPEND | O_CLOEXEC;
  descriptor_ = OpenFile(::open(target_.c_str(), kAppending));
  if (descriptor_.get() >= 0) return;
  if (errno != ENOENT) fail(errno);
  // Made by `commit`; here only the folder is looked at.
  const std::string folder = std::filesystem::path(target_).parent_path().string();
  if (access(folder.c_str(), W_OK | X_OK) != 0) fail(errno);
  isNew_ = true;
}

/// In the same folder, because only there a file can be renamed without copying it.
void Output::openBeside(int mode) {
  const auto folder = std::filesystem::path(target_).parent_path();
  for (int i = 0; descriptor_.get() < 0; ++i) {
    const std::string name = folder / fmt::format(".mrvsim-{}-{}", getpid(), i);
    constexpr int kMaking = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    descriptor_ = OpenFile(::open(name.c_str(), kMaking, 0600));
    if (descriptor_.get() < 0 && errno != EEXIST) fail(errno);
    if (descriptor_.get() >= 0) temporary_ = name;
  }
  theLeftovers().add(temporary_);
  if (fchmod(descriptor_.get(), static_cast<mode_t>(mode)) != 0) fail(errno);
}

void Output::write(std::string_view text) {
  if (mode_ == Mode::kAppend) {
    waiting_.append(text);
    return;
  }
  held_ += text;
  if (held_.size() >= kMostHeld) writeHeld();
}

void Output::flush() {
  if (target_.empty()) writeHeld();
}

void Output::writeHeld() {
  writeAll(held_);
  held_.clear();
}

void Output::writeWaiting() {
  waiting_.each([this](std::string_view text) { writeAll(text); });
}

void Output::writeAll(std::string_view text) {
  while (!text.empty()) {
    throwIfInterrupted();
    const ssize_t written = ::write(descriptor_.get(), text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) fail(errno);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void Output::checkedClose() {
  if (close(descriptor_.release()) != 0 && errno != EINTR) fail(errno);
}

void Output::prepare() {
  if (isAppended() || descriptor_.get() < 0) return;
  mode_ == Mode::kAppend ? writeWaiting() : writeHeld();
  checkedClose();
}

void Output::commit() {
  prepare();
  if (isAppended()) appendToFile();
  if (!temporary_.empty()) replaceFile();
}

void Output::replaceFile() {
  if (rename(temporary_.c_str(), target_.c_str()) != 0) fail(errno);
  theLeftovers().forget(std::exchange(temporary_, {}));
}

/// The lock keeps two runs from taking back each other's text.
void Output::appendToFile() {
  if (isNew_) {
    descriptor_ = OpenFile(
        ::open(target_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, modeOfNewFiles()));
    if (descriptor_.get() < 0) fail(errno);
  }
  while (flock(descriptor_.get(), LOCK_EX) != 0 && errno == EINTR) throwIfInterrupted();
  struct stat before = {};
  if (fstat(descriptor_.get(), &before) != 0) fail(errno);
  try {
    writeWaiting();
    checkedClose();
  } catch (...) {
    takeBack(before.st_size);
    throw;
  }
}

/// Restores the file to its size before.
void Output::takeBack(off_t size) const {
  const bool isEmptied = isNew_ && size == 0;
  const int result = isEmptied ? unlink(target_.c_str()) : truncate(target_.c_str(), size);
  if (result != 0) fail(errno, "a part was written that cannot be taken back");
}

void takeStandardDescriptors() {
  // Opened the wrong way round, so that reading or writing fails as it does without a file.
  const int modes[] = {O_WRONLY, O_RDONLY, O_WRONLY};
  for (int descriptor = 0; descriptor < 3; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    if (open("/dev/null", modes[descriptor]) != descriptor) return;
  }
}

void complain(const std::string& message) {
  const std::string line = "mrvsim: " + message + "\n";
  for (std::size_t done = 0; done < line.size();) {
    const ssize_t written = write(STDERR_FILENO, line.data() + done, line.size() - done);
    if (written <= 0) return;
    done += static_cast<std::size_t>(written);
  }
}

}  // namespace simulator
