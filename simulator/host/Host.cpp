#include "simulator/host/Host.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <vector>

#include "simulator/host/model/HostState.h"
#include "simulator/host/suites/Suites.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace {

using Lock = std::lock_guard<std::recursive_mutex>;

void reportMemoryBlocks(HostState& state) {
  std::vector<std::size_t> ordinals;
  for (const auto& [block, ordinal] : state.memoryBlocks) {
    ordinals.push_back(ordinal);
    std::free(block);
  }
  std::sort(ordinals.begin(), ordinals.end());
  for (const std::size_t ordinal : ordinals) {
    theLog().misuse(fmt::format("leaked: memory block {}", ordinal));
  }
  state.memoryBlocks.clear();
}

}  // namespace

SPBasicSuite* Host::basicSuite() { return &simulator::basicSuite.record; }

// Any unique address will do: plug-ins treat the reference as opaque and only pass it back.
SPPluginRef Host::plugIn() { return reinterpret_cast<SPPluginRef>(&hostState()); }

Model& Host::model() { return hostState().model; }

TypeIds& Host::typeIds() { return hostState().ids; }

void Host::setVersion(std::optional<std::pair<int, int>> version) { model().version = version; }

void Host::setTool(std::string stringId) { model().tool = std::move(stringId); }

const std::string& Host::tool() const { return hostState().model.tool; }

void Host::setBrush(std::optional<double> diameter) {
  std::optional<Brush>& brush = model().brush;
  if (!diameter) {
    brush.reset();
    return;
  }
  if (!brush) brush.emplace();
  brush->diameter = *diameter;
}

std::optional<double> Host::brush() const {
  const std::optional<Brush>& brush = hostState().model.brush;
  return brush ? std::optional(brush->diameter) : std::nullopt;
}

void Host::setModal(std::intptr_t value) { model().modal = value; }

void Host::setAnswer(DescriptorKeyID property, ContainerPtr answer) {
  if (answer) {
    hostState().answers[property] = std::move(answer);
  } else {
    hostState().answers.erase(property);
  }
}

PIActionDescriptor Host::makeDescriptor(ContainerPtr content) {
  return hostState().descriptors.add(std::move(content), nullptr);
}

PIActionList Host::makeList(ContainerPtr content) {
  return hostState().lists.add(std::move(content), nullptr);
}

PIActionReference Host::makeReference(Reference content) {
  return hostState().references.add(SharedReference(std::move(content)), nullptr);
}

ContainerPtr Host::contentOf(PIActionDescriptor descriptor) const {
  const ContainerPtr* content = hostState().descriptors.peek(descriptor);
  return content ? *content : nullptr;
}

ContainerPtr Host::contentOf(PIActionList list) const {
  const ContainerPtr* content = hostState().lists.peek(list);
  return content ? *content : nullptr;
}

Reference Host::contentOf(PIActionReference reference) const {
  const SharedReference* content = hostState().references.peek(reference);
  if (content == nullptr) return {};
  return {content->forms().begin(), content->forms().end()};
}

std::size_t Host::objectsOwned() const {
  const HostState& state = hostState();
  return state.descriptors.owned() + state.lists.owned() + state.references.owned() +
         state.strings.owned() + theMemoryHandles().owned() + state.memoryBlocks.size();
}

int Host::suitesHeld() const {
  const auto& holds = hostState().holds;
  return std::accumulate(holds.begin(), holds.end(), 0);
}

void Host::reportLeaks() {
  HostState& state = hostState();
  const Lock lock(state.mutex);
  state.descriptors.reportLeaks();
  state.lists.reportLeaks();
  state.references.reportLeaks();
  state.strings.reportLeaks();
  theMemoryHandles().reportLeaks();
  reportMemoryBlocks(state);
}

std::vector<std::string_view> hostProcedures() { return suiteProcedureNames(); }

Host& theHost() {
  static Host& host = *new Host;
  hostState();
  return host;
}

}  // namespace simulator
