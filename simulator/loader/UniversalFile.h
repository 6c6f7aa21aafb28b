// Finds the Mach-O file for one processor in a universal file.
#pragma once

#include <vector>

#include "simulator/loader/ByteReader.h"
#include "simulator/loader/MachFormat.h"

namespace simulator {

/// The slice for `wanted` in a universal file with a table of either form (FAT_MAGIC,
/// FAT_MAGIC_64), not copied. Slices are told apart by type and subtype; if none has the subtype
/// that is wanted, the first one of the type is taken. A LoadError that names the slices if there
/// is none for the processor or two for one processor, if the table has too many rows or ends too
/// early, and if a slice lies outside the file, overlaps the table or another slice, or is not
/// aligned as the table says or to a page. What a slice holds is not checked. [any-thread]
/// REQUIRES: the file has the universal format.
Bytes sliceFor(Bytes file, mach::Processor wanted);

/// The processors of a universal file's slices, in the order of its table. A LoadError for a faulty
/// table, as above. [any-thread]
/// REQUIRES: the file has the universal format.
std::vector<mach::Processor> processorsIn(Bytes file);

}  // namespace simulator
