// Files in the classic Mac's resource format: data kept by type and number, as published in the
// platform's resource manager reference. Numbers in it are big-endian.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

/// What is wrong with a resource file or a description of one.
class ResourceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One resource; `data` are bytes.
struct Resource {
  std::uint32_t type = 0;  ///< four-character code
  std::int16_t id = 0;
  std::string name;  ///< at most 255 bytes; empty: none
  std::string data;
};

/// The file that holds these resources. The same resources always give the same bytes.
/// A ResourceError where a name is too long or two resources share type and number.
std::string writeResourceFork(const std::vector<Resource>& resources);

/// The resources of a file, in its own order. `bytes` may be anything: a ResourceError says what
/// is wrong with them.
std::vector<Resource> readResourceFork(const std::string& bytes);
