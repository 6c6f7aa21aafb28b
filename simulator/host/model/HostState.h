// The simulated host's state, which its suites share.
#pragma once

#include <array>
#include <map>
#include <mutex>
#include <thread>

#include "simulator/host/model/Model.h"
#include "simulator/host/model/ObjectTable.h"
#include "simulator/host/model/TypeIds.h"

namespace simulator {

/// The suites that the host offers, and the basic suite, which needs no acquiring.
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
  std::map<void*, std::size_t> memoryBlocks;  ///< ordinals of the basic suite's blocks, by address
  std::size_t lastMemoryBlock = 0;

  TypeIds ids;
  Model model;
  /// Answers that replace the model's, by the property that a get asks for.
  std::map<DescriptorKeyID, NestedContainer> answers;
};

/// The process-wide state; it outlives every static object.
HostState& hostState();

}  // namespace simulator
