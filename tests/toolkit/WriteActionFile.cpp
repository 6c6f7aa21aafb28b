// Writes the action file of which docs/toolkit.md speaks: write_action_file FILE
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/actionfiles/ActionFileWriter.h"

using namespace testing_support;

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  actionfiles::Form tool;
  tool.desiredClass = className(stringId("blurTool"));
  actionfiles::Reference target;
  target.push_back(std::move(tool));
  std::vector<actionfiles::Item> items;
  items.push_back({codeId("null"), valueOf(actionfiles::kReference, std::move(target))});
  std::vector<actionfiles::Step> steps;
  steps.push_back(stepOf(codeId("slct"), "Select Blur Tool", std::move(items)));
  RecordedSet set = setOf(std::move(steps));
  set.head.name = textOf(u"Portraits");
  set.actions[0].head.name = textOf(u"Soften");
  std::ofstream(argv[1], std::ios::binary) << written(set);
  return 0;
}
