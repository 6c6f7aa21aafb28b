// Files in the classic Mac's resource format, as published in the platform's Resource Manager
// reference: data stored by type and number. Integers are big-endian.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

/// An error in a resource file or in a description of one.
class ResourceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One resource; `data` contains bytes.
struct Resource {
  std::uint32_t type = 0;  ///< four-character code
  std::int16_t id = 0;
  std::string name;  ///< at most 255 bytes; empty if it has no name
  std::string data;
};

/// Makes the bytes of a file with these resources. Equal resources give equal bytes. Throws
/// ResourceError if a name is too long or two resources have the same type and number.
std::string writeResourceFork(const std::vector<Resource>& resources);

/// Reads the resources of a file, in the file's order. `bytes` may contain anything; throws
/// ResourceError if they are not a valid file.
std::vector<Resource> readResourceFork(const std::string& bytes);
