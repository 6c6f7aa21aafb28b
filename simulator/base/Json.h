// The JSON type of the simulator. Every source that reads or writes JSON includes this header: the
// type is compiled once (Json.cpp) and not in each of them.
#pragma once

#include <nlohmann/json.hpp>

#include <string_view>

namespace simulator {

/// Fields keep the order in which they were added.
using Json = nlohmann::ordered_json;

/// Parses a text; the parser is compiled once, too. Throws Json::parse_error.
Json jsonOf(std::string_view text);

}  // namespace simulator

extern template class nlohmann::basic_json<nlohmann::ordered_map>;
