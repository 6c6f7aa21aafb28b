// The simulated host's model: the application, its tool, its documents and its actions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/host/PIActions.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// Diameter in pixels; hardness and spacing in percent.
struct Brush {
  double diameter = 13.0;
  double hardness = 100.0;
  double spacing = 25.0;
};

struct Layer {
  std::uint32_t id = 1;
  std::string name = "Background";
  double opacity = 100.0;
  bool visible = true;
  bool background = false;
};

struct Document {
  std::uint32_t id = 1;
  std::string name = "Untitled-1";
  std::string path = "/Users/simulated/Pictures/Untitled-1.psd";
  double width = 800.0;  ///< pixels
  double height = 600.0;
  double resolution = 72.0;  ///< pixels per inch
  double zoom = 1.0;
  bool dirty = false;
  std::vector<Layer> layers = {{1, "Background", 100.0, true, true}, {2, "Layer 1"}};
  std::size_t currentLayer = 0;
  std::vector<std::string> history = {"Open"};
};

/// A recorded step of an action.
struct RecordedStep {
  DescriptorEventID event = 0;
  std::string name = {};  ///< of the command; may be empty
  bool enabled = true;
  PIDialogPlayOptions dialog = 0;   ///< as recorded
  NestedContainer parameters = {};  ///< null: none
};

/// An action. Playing it fails with `error` if that is not 0, else plays its steps and puts
/// `message` into the result.
struct Action {
  std::uint32_t id = 1;
  std::string name;
  std::optional<std::string> message = {};
  OSErr error = 0;
  std::vector<RecordedStep> steps = {};
};

struct ActionSet {
  std::uint32_t id = 1;
  std::string name;
  std::vector<Action> actions;
};

struct Model {
  /// Major and minor; with nullopt a query for the version fails.
  std::optional<std::pair<int, int>> version = {{12, 1}};
  /// The string ID of the current tool; if empty, answers name no tool.
  std::string tool = "paintbrushTool";
  /// With nullopt the current tool has no brush options.
  std::optional<Brush> brush = Brush{};
  std::intptr_t modal = 0;  ///< the property 'aism'
  std::vector<Document> documents = {Document{}};
  std::size_t currentDocument = 0;
  std::vector<ActionSet> actionSets = {
      {1, "Default Actions", {{1, "Vignette"}, {2, "Frame Channel"}, {3, "Wood Frame"}}}};
};

}  // namespace simulator
