// The report's page without its data. It is put together from the files in report/page/ when the
// program is built.
#pragma once

#include <string_view>

namespace simulator {

extern const std::string_view kPageBeforeData;
extern const std::string_view kPageAfterData;

}  // namespace simulator
