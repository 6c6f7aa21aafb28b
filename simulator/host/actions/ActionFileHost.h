// Action files as the simulated host takes them in: their content in the types of its model.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "actionfiles/ActionFile.h"
#include "actionfiles/ByteSource.h"
#include "simulator/host/model/Model.h"
#include "simulator/host/model/TypeIds.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// The number of an ID: of a code the code, of a string ID the number that the host gave it or now
/// gives.
std::uint32_t hostID(const actionfiles::Id& id, TypeIds& ids);

/// The items of a descriptor. String IDs are numbered in the order of the file. Of a key that a
/// broken file repeats, the last value counts. The host's model leaves out what it has no place
/// for: the class of the outermost descriptor, the localized names of classes, and the values of
/// the types 'ObAr' and 'UnFl', whose items have a type only. An alias, a path or a bookmark
/// becomes the path that it names, which is the file's name alone for an alias and empty if it
/// cannot be read; unless it is a path, its bytes are kept.
ContainerPtr hostDescriptor(const actionfiles::Descriptor& descriptor, TypeIds& ids);

/// A step: its event, then its descriptor, which is null if the step has none.
RecordedStep hostStep(const actionfiles::Step& step, TypeIds& ids);

/// Reads a whole action file. The IDs of the set and of its actions are left to the caller. Throws
/// actionfiles::ActionFileError.
ActionSet readActionSet(actionfiles::ByteSource& source, TypeIds& ids);

/// Reads action files and makes their sets the model's, with IDs from 1 upward. Throws
/// actionfiles::ActionFileError and then changes nothing in the model.
void loadActionFiles(const std::vector<std::string>& files, Model& model, TypeIds& ids);

}  // namespace simulator
