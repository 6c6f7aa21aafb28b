// The host's current tool and the size of its brush. [main-thread]
#pragma once

/// The number of every tool without an assigned number.
inline constexpr int kOtherTool = 62;

/// Reads the current tool of the application: writes this plug-in's number for it (29 to 61, or
/// `kOtherTool`) to `*toolNumber` and, unless `hostToolID` is null, the host's identifier to
/// `*hostToolID`. Returns the host error, 0 for success. Returns 0 and writes nothing if the host's
/// answer has no tool. If only the conversion of the identifier to a name fails, returns that error
/// but still writes both. Throws the host's code as a `std::uint32_t` if a suite cannot be
/// acquired.
/// REQUIRES: `toolNumber` is not null.
int PlayeventGetActiveTool(int* toolNumber, int* hostToolID);

/// Reads the diameter of the current tool's brush, truncated towards zero, in the unit that the
/// host reports (not checked). Returns the host error, 0 for success. Returns 0 and leaves `*size`
/// unchanged if the host's answer has no tool; a tool without a brush gives the host's error.
/// Throws what `PlayeventGetActiveTool` throws.
/// REQUIRES: `size` is not null.
int PlayeventGetBrushSize(int* size);
