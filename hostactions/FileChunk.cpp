#include "hostactions/FileChunk.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string_view>

bool FileChunk::read(std::FILE* file) {
  size = std::fread(bytes, 1, kCapacity, file);
  return size > 0;
}

std::size_t FileChunk::find(std::string_view pattern) const {
  const unsigned char* const end = bytes + size + pattern.size() - 1;
  const unsigned char* const found = std::search(bytes, end, pattern.begin(), pattern.end());
  return found == end ? size : static_cast<std::size_t>(found - bytes);
}
