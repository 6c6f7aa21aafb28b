// The owner of an open C stdio stream. [any-thread]
#pragma once

#include <cstdio>
#include <memory>

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// Closes the stream at the end of its life; null stands for a file that could not be opened.
using File = std::unique_ptr<std::FILE, FileCloser>;
