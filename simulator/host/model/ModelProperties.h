// The properties of the host's objects, as items of a descriptor.
#pragma once

#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// Together these use every type of item. `index` counts from 0 among `count` siblings; the item
/// index in the result counts from 1.
Container applicationProperties(const Model& model, TypeIds& ids);
Container documentProperties(const Document& document, std::size_t index, std::size_t count,
                             TypeIds& ids);
Container layerProperties(const Layer& layer, std::size_t index, std::size_t count,
                          const Document& document);
Container historyProperties(const std::string& state, std::size_t index, std::size_t count);
Container actionSetProperties(const ActionSet& set, std::size_t index, std::size_t count);
Container actionProperties(const Action& action, std::size_t index, std::size_t count,
                           const ActionSet& set);
Container brushProperties(const Brush& brush);

}  // namespace simulator
