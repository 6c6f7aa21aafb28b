#include "simulator/scenario/OutputCapture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace simulator {

namespace {

int checked(int result) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), "standard output");
  return result;
}

}  // namespace

OutputCapture::OutputCapture() {
  std::fflush(stdout);
  original_ = checked(dup(STDOUT_FILENO));
  memory_ = checked(memfd_create("printed", MFD_CLOEXEC));
  checked(dup2(memory_, STDOUT_FILENO));
}

OutputCapture::~OutputCapture() {
  std::fflush(stdout);
  dup2(original_, STDOUT_FILENO);
  close(original_);
  close(memory_);
}

void OutputCapture::readMore() {
  if (std::fflush(stdout) != 0) error_ = errno;
  // Standard output and `memory_` have one position, the end of what was printed.
  if (lseek(memory_, 0, SEEK_CUR) == position_) return;
  char bytes[4096];
  ssize_t count;
  while ((count = pread(memory_, bytes, sizeof bytes, position_)) > 0) {
    pending_.append(bytes, static_cast<std::size_t>(count));
    position_ += count;
  }
}

void OutputCapture::drain(const std::function<void(const std::string&)>& line) {
  readMore();
  std::size_t end;
  while ((end = pending_.find('\n')) != std::string::npos) {
    const std::string text = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    line(text);
  }
}

void OutputCapture::finish(const std::function<void(const std::string&)>& line) {
  drain(line);
  if (error_ != 0) {
    throw std::system_error(error_, std::generic_category(), "what the plug-in prints");
  }
  if (pending_.empty()) return;
  line(pending_);
  pending_.clear();
}

}  // namespace simulator
