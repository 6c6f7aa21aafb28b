// The simulated host, as the one who plays it sees it.
//
//     simulator::Host& host = simulator::theHost();
//     host.setTool("eraserTool");
//     SPMessageData message = {0, host.plugIn(), nullptr, host.basicSuite()};
//     AutoPluginMain(kSPInterfaceCaller, kSPInterfaceStartupSelector, &message);
//
// The thread that first asks for the host is its main thread. Every call of a suite on another
// thread, every object leaked, freed twice, used after it was freed or taken for one of another
// kind, and every suite released too often or used while it is not held is a line "misuse" in the
// log. Handles are never handed out twice.
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

/// All members: [main-thread].
class Host {
 public:
  /// What a message to the plug-in carries.
  SPBasicSuite* basicSuite();
  SPPluginRef plugIn();

  /// The model behind all answers, free to be changed.
  Model& model();
  TypeIds& typeIds();

  /// Major and minor; none: the version query is answered with error -1715.
  void setVersion(std::optional<std::pair<int, int>> version);

  /// The string ID of the current tool; the brush stays. Empty: a get of the tool succeeds with an
  /// answer that names none.
  void setTool(std::string stringId);
  const std::string& tool() const;

  /// The brush's diameter in pixels; none: the current tool has no brush options.
  void setBrush(std::optional<double> diameter);
  std::optional<double> brush() const;

  /// What the property suite says to 'aism'; non-zero: the host is modal.
  void setModal(std::intptr_t value);

  /// Lets every get of this property be answered with `answer` in place of the model's own, until
  /// null takes its place.
  void setAnswer(DescriptorKeyID property, ContainerPtr answer);

  /// Objects that are handed to the plug-in from outside, as a parameter. They are no leak.
  PIActionDescriptor makeDescriptor(ContainerPtr content);
  PIActionList makeList(ContainerPtr content);
  PIActionReference makeReference(Reference content);

  /// What a handle holds, null (no forms) where it is not alive.
  ContainerPtr contentOf(PIActionDescriptor descriptor) const;
  ContainerPtr contentOf(PIActionList list) const;
  Reference contentOf(PIActionReference reference) const;

  /// How many objects the plug-in has yet to free; how many suites it has yet to release, each
  /// counted as often as it was acquired.
  std::size_t objectsOwned() const;
  int suitesHeld() const;

  /// One misuse for every object that the plug-in has not freed. Then all objects are forgotten, so
  /// that a second call reports nothing.
  void reportLeaks();
};

/// The one host of the process; it outlives every static object.
Host& theHost();

/// The names of all procedures of the host's suites, such as "ActionControl.Get".
std::vector<std::string_view> hostProcedures();

}  // namespace simulator
