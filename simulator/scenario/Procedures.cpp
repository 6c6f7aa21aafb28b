#include "simulator/scenario/Procedures.h"

#include <set>
#include <vector>

#include "simulator/host/Host.h"
#include "simulator/macos/MacFaults.h"

namespace simulator {

namespace {

const std::set<std::string_view>& allProcedures() {
  static const std::set<std::string_view> all = [] {
    const std::vector<std::string_view> host = hostProcedures();
    std::set<std::string_view> names(host.begin(), host.end());
    names.insert("Framework.Install");
    for (const std::string_view call : macProcedures()) names.insert(call);
    return names;
  }();
  return all;
}

}  // namespace

bool isProcedure(std::string_view name) { return allProcedures().contains(name); }

std::vector<std::string> procedureNames() {
  return {allProcedures().begin(), allProcedures().end()};
}

}  // namespace simulator
