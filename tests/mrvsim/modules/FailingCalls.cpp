// To be preloaded: the C library's calls that MRV_FAILING names (close, rename, truncate, unlink,
// write) fail on files in the folder MRV_FAILING_IN. A failing write takes half of the bytes first.
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

bool fails(std::string_view call, std::string_view path) {
  const char* const calls = std::getenv("MRV_FAILING");
  const char* const folder = std::getenv("MRV_FAILING_IN");
  if (calls == nullptr || folder == nullptr || !path.starts_with(folder)) return false;
  return (" " + std::string(calls) + " ").find(" " + std::string(call) + " ") != std::string::npos;
}

bool fails(std::string_view call, int descriptor) {
  std::array<char, 4096> path;
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t size = readlink(link.c_str(), path.data(), path.size());
  return size > 0 && fails(call, std::string_view(path.data(), static_cast<std::size_t>(size)));
}

int failed(int error) {
  errno = error;
  return -1;
}

}  // namespace

extern "C" {

int close(int descriptor) {
  const bool broken = fails("close", descriptor);
  const auto result = static_cast<int>(syscall(SYS_close, descriptor));
  return broken ? failed(EIO) : result;
}

int rename(const char* from, const char* to) noexcept {
  if (fails("rename", to)) return failed(EIO);
  return renameat(AT_FDCWD, from, AT_FDCWD, to);
}

int truncate(const char* path, off_t size) noexcept {
  if (fails("truncate", path)) return failed(EIO);
  return static_cast<int>(syscall(SYS_truncate, path, size));
}

int unlink(const char* path) noexcept {
  if (fails("unlink", path)) return failed(EIO);
  return unlinkat(AT_FDCWD, path, 0);
}

ssize_t write(int descriptor, const void* bytes, std::size_t size) {
  if (!fails("write", descriptor)) return syscall(SYS_write, descriptor, bytes, size);
  if (size < 2) return failed(ENOSPC);
  return syscall(SYS_write, descriptor, bytes, size / 2);
}
}
