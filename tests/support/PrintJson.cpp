#include "tests/support/PrintJson.h"

#include <ostream>

namespace nlohmann {

void PrintTo(const ordered_json& value, std::ostream* stream) { *stream << value.dump(); }

}  // namespace nlohmann
