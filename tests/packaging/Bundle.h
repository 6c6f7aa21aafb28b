// Access to the files of the built bundle.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline std::filesystem::path bundleFile(const std::string& name) {
  return std::filesystem::path(MRV_BUNDLE) / "Contents" / name;
}

inline std::string readText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
