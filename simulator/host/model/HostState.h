// Everything that the simulated host keeps; shared by its suites.
#pragma once

#include <array>
#include <map>
#include <mutex>
#include <thread>

#include "simulator/host/model/Model.h"
#include "simulator/host/model/ObjectTable.h"
#include "simulator/host/model/TypeIds.h"

namespace simulator {

/// The suites that the host offers, and the basic suite, which is always held.
enum class SuiteId {
  descriptor,
  control,
  reference,
  list,
  handle,
  string,
  property,
  alias,
  basic,
};
inline constexpr std::size_t kSuiteCount = static_cast<std::size_t>(SuiteId::basic) + 1;

struct HostState {
  std::recursive_mutex mutex;
  std::thread::id mainThread = std::this_thread::get_id();
  std::array<int, kSuiteCount> holds{};

  ObjectTable<PIActionDescriptor> descriptors;
  ObjectTable<PIActionList> lists;
  ObjectTable<PIActionReference> references;
  ObjectTable<ASZString> strings;
  std::map<void*, std::size_t> memoryBlocks;  ///< of the basic suite, by address: their ordinals
  std::size_t lastMemoryBlock = 0;

  TypeIds ids;
  Model model;
  /// Answers that stand in for the model's, by the property that is asked for.
  std::map<DescriptorKeyID, NestedContainer> answers;
};

/// The one host of the process; it outlives every static object.
HostState& hostState();

}  // namespace simulator
