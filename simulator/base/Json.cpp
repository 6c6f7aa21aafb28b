#include "simulator/base/Json.h"

template class nlohmann::basic_json<nlohmann::ordered_map>;
