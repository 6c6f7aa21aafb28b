// A C stdio stream that writes to memory.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

class MemoryStream {
 public:
  MemoryStream() : file_(open_memstream(&bytes_, &size_)) {}
  ~MemoryStream() {
    std::fclose(file_);
    std::free(bytes_);
  }
  MemoryStream(const MemoryStream&) = delete;
  MemoryStream& operator=(const MemoryStream&) = delete;

  std::FILE* file() { return file_; }

  std::string text() {
    std::fflush(file_);
    return std::string(bytes_, size_);
  }

 private:
  char* bytes_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* file_;
};
