// The simulated host, as tests and the scenario player control it.
//
//     simulator::Host& host = simulator::theHost();
//     host.setTool("eraserTool");
//     SPMessageData message = {0, host.plugIn(), nullptr, host.basicSuite()};
//     AutoPluginMain(kSPInterfaceCaller, kSPInterfaceStartupSelector, &message);
//
// The thread that first asks for the host is its main thread. The log gets a line "misuse" for each
// suite call on another thread, for each object that is leaked, freed twice, used after it was
// freed or passed as an object of another kind, and for each suite that is released too often or
// used while it is not held. Handles are never handed out twice.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/host/SPBasic.h"
#include "simulator/base/Log.h"
#include "simulator/host/json/DescriptorJson.h"
#include "simulator/host/model/Model.h"

namespace simulator {

/// Every member: [main-thread].
class Host {
 public:
  /// The basic suite and the plug-in reference that each message to the plug-in carries.
  SPBasicSuite* basicSuite();
  SPPluginRef plugIn();

  /// The model that the host answers from. Callers may change it between calls of the plug-in.
  Model& model();
  TypeIds& typeIds();

  /// Major and minor; with nullopt a version query gets error -1715.
  void setVersion(std::optional<std::pair<int, int>> version);

  /// Sets the current tool by its string ID and keeps the brush. If it is empty, a get of the tool
  /// succeeds but its answer names no tool.
  void setTool(std::string stringId);
  const std::string& tool() const;

  /// The brush's diameter in pixels; with nullopt the current tool has no brush options.
  void setBrush(std::optional<double> diameter);
  std::optional<double> brush() const;

  /// The value of the property 'aism'; non-zero means that the host is modal.
  void setModal(std::intptr_t value);

  /// Answers every get of this property with `answer` instead of from the model; null restores the
  /// model's answer.
  void setAnswer(DescriptorKeyID property, ContainerPtr answer);

  /// Make objects that are passed to the plug-in as parameters. They do not count as leaks.
  PIActionDescriptor makeDescriptor(ContainerPtr content);
  PIActionList makeList(ContainerPtr content);
  PIActionReference makeReference(Reference content);

  /// The content of a handle; null, or a reference without forms, if the handle is not alive.
  ContainerPtr contentOf(PIActionDescriptor descriptor) const;
  ContainerPtr contentOf(PIActionList list) const;
  Reference contentOf(PIActionReference reference) const;

  /// The number of objects that the plug-in has yet to free, and the number of acquisitions of
  /// suites that it has yet to release.
  std::size_t objectsOwned() const;
  int suitesHeld() const;

  /// Logs a misuse for every object that the plug-in has not freed, then forgets all objects: a
  /// second call reports nothing.
  void reportLeaks();
};

/// The process-wide host; it outlives every static object.
Host& theHost();

/// The names of all procedures of the host's suites, such as "ActionControl.Get". [any-thread]
std::vector<std::string_view> hostProcedures();

}  // namespace simulator
