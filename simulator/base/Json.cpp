#include "simulator/base/Json.h"

template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace simulator {

Json jsonOf(std::string_view text) { return Json::parse(text); }

}  // namespace simulator
