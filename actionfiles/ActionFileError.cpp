#include "actionfiles/ActionFileError.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace actionfiles {

ActionFileError::ActionFileError(const std::string& file, std::uint64_t offset,
                                 const std::string& reason)
    : std::runtime_error(file + ": at byte " + std::to_string(offset) + ": " + reason),
      offset_(offset) {}

ActionFileError::ActionFileError(const std::string& file, const std::string& reason)
    : std::runtime_error(file + ": cannot be read: " + reason) {}

}  // namespace actionfiles
