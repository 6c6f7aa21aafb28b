#include "mrvsim/ListCommand.h"

#include <fmt/format.h>

#include <map>
#include <stdexcept>

#include "mrvsim/ExitStatus.h"
#include "mrvsim/Output.h"
#include "simulator/scenario/Names.h"
#include "simulator/scenario/Procedures.h"
#include "simulator/scenario/ScenarioReader.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

using Names = std::vector<std::string>;

const std::map<std::string, Names (*)()>& lists() {
  static const std::map<std::string, Names (*)()> lists = {
      {"layouts", [] { return knownLayouts(); }},
      {"procedures", [] { return procedureNames(); }},
      {"steps", [] { return stepNames(); }},
      {"tools", [] { return knownTools(); }},
  };
  return lists;
}

}  // namespace

std::vector<std::string> listables() {
  Names names;
  for (const auto& [name, list] : lists()) names.push_back(name);
  return names;
}

int runList(const std::string& what) {
  const auto list = lists().find(what);
  if (list == lists().end()) {
    throw std::runtime_error(fmt::format("list {}: there is no such list{}; allowed: {}",
                                         printable(what), guess(what, listables()),
                                         listed(listables())));
  }
  Output out("-");
  out.open();
  for (const std::string& name : list->second()) out.write(name + "\n");
  out.commit();
  return kDone;
}

}  // namespace simulator
