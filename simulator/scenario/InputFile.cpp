#include "simulator/scenario/InputFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "simulator/scenario/Interrupts.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

/// Opens the file and lets an interruption end the wait for the other end of a named pipe.
int openForReading(const std::string& file) {
  while (true) {
    throwIfInterrupted();
    const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor >= 0 || errno != EINTR) return descriptor;
  }
}

/// A file without a name, so nothing stays behind.
int openNameless(const std::filesystem::path& folder) {
#ifdef O_TMPFILE  // Linux alone has it, and not on every file system.
  const int descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor >= 0 || (errno != EOPNOTSUPP && errno != EISDIR)) return descriptor;
#endif
  std::string name = (folder / "mrvsim-XXXXXX").string();
  const int named = mkostemp(name.data(), O_CLOEXEC);
  if (named >= 0) unlink(name.c_str());
  return named;
}

}  // namespace

std::size_t TextSource::read(std::uint64_t offset, char* to, std::size_t size) const {
  if (offset >= text_.size()) return 0;
  return text_.copy(to, size, offset);
}

OpenFile::~OpenFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

OpenFile::OpenFile(OpenFile&& other) noexcept : descriptor_(other.release()) {}

OpenFile& OpenFile::operator=(OpenFile&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  return *this;
}

int OpenFile::release() { return std::exchange(descriptor_, -1); }

void TemporaryFile::make() {
  file_ = OpenFile(openNameless(temporaryFolder()));
  if (!isMade()) throw temporaryFailure("make a temporary file");
}

void TemporaryFile::append(std::string_view bytes) {
  if (!isMade()) make();
  while (!bytes.empty()) {
    const ssize_t written = write(file_.get(), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) {
      throwIfInterrupted();
      continue;
    }
    if (written < 0) throw temporaryFailure("write a temporary file");
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::size_t TemporaryFile::read(std::uint64_t offset, char* to, std::size_t size) const {
  while (true) {
    throwIfInterrupted();
    const ssize_t count = pread(file_.get(), to, size, static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw temporaryFailure("read a temporary file");
    return static_cast<std::size_t>(count);
  }
}

InputFile::InputFile(const std::string& file) {
  const bool isStandardInput = file == "-";
  name_ = isStandardInput ? "standard input" : printableFile(file);
  if (file.empty()) throw BadInput("the name of an input file is empty");
  file_ =
      OpenFile(isStandardInput ? fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3) : openForReading(file));
  struct stat status = {};
  if (file_.get() < 0 || fstat(file_.get(), &status) != 0) fail(errno);
  if (S_ISDIR(status.st_mode)) fail(EISDIR);
  identity_ = {status.st_dev, status.st_ino};
  // What standard input holds begins at its position.
  const bool atStart = lseek(file_.get(), 0, SEEK_CUR) == 0;
  if (!S_ISREG(status.st_mode) || !atStart) spool_.make();
}

void InputFile::fail(int error) const {
  throw BadInput(fmt::format("{}: cannot be read: {}", name_, std::strerror(error)));
}

/// Copies until the spool reaches beyond `offset`; false at the end of the input.
bool InputFile::copyUntil(std::uint64_t offset) const {
  std::array<char, 65536> buffer;
  while (copied_ <= offset && !atEnd_) {
    throwIfInterrupted();
    const ssize_t size = ::read(file_.get(), buffer.data(), buffer.size());
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) fail(errno);
    spool_.append({buffer.data(), static_cast<std::size_t>(size)});
    copied_ += static_cast<std::uint64_t>(size);
    atEnd_ = size == 0;
  }
  return copied_ > offset;
}

std::optional<std::uint64_t> InputFile::size() const {
  if (spool_.isMade()) return atEnd_ ? std::optional(copied_) : std::nullopt;
  struct stat status = {};
  if (fstat(file_.get(), &status) != 0) fail(errno);
  return static_cast<std::uint64_t>(status.st_size);
}

std::size_t InputFile::read(std::uint64_t offset, char* to, std::size_t size) const {
  if (spool_.isMade()) return copyUntil(offset) ? spool_.read(offset, to, size) : 0;
  while (true) {
    throwIfInterrupted();
    const ssize_t count = pread(file_.get(), to, size, static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail(errno);
    return static_cast<std::size_t>(count);
  }
}

std::string InputFile::text() const {
  std::string text;
  std::array<char, 65536> buffer;
  while (const std::size_t size = read(text.size(), buffer.data(), buffer.size())) {
    text.append(buffer.data(), size);
  }
  return text;
}

std::filesystem::path temporaryFolder() {
  const char* folder = std::getenv("TMPDIR");
  return std::filesystem::absolute(folder == nullptr || *folder == '\0' ? "/tmp" : folder);
}

TemporaryFileError temporaryFailure(const std::string& what) {
  const std::string reason = std::strerror(errno);
  return TemporaryFileError(
      fmt::format("cannot {} in {}: {} (the variable TMPDIR names the folder to use)", what,
                  printableFile(temporaryFolder().string()), reason));
}

}  // namespace simulator
