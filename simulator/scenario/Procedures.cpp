#include "simulator/scenario/Procedures.h"

#include <set>
#include <vector>

#include "simulator/host/Host.h"

namespace simulator {

namespace {

std::set<std::string_view> allProcedures() {
  const std::vector<std::string_view> host = hostProcedures();
  std::set<std::string_view> names(host.begin(), host.end());
  names.insert("Framework.Install");
  return names;
}

}  // namespace

bool isProcedure(std::string_view name) {
  static const std::set<std::string_view> known = allProcedures();
  return known.contains(name);
}

}  // namespace simulator
