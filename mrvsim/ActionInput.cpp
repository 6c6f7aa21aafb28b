#include "mrvsim/ActionInput.h"

#include <algorithm>
#include <filesystem>

namespace simulator {

bool isActionFile(const std::string& name, const InputFile& input) {
  std::string extension = std::filesystem::path(name).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  char first = ' ';
  return extension == ".atn" || (input.read(0, &first, 1) == 1 && first == 0);
}

std::string_view ActionInput::next() {
  const std::size_t size = input_.read(offset_, buffer_.data(), buffer_.size());
  offset_ += size;
  return {buffer_.data(), size};
}

}  // namespace simulator
