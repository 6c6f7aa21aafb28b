// The host's current tool and the size of its brush. [main-thread]
#pragma once

/// The number of every tool that has none of its own.
inline constexpr int kOtherTool = 62;

/// The current tool of the application: this plug-in's number for it in `*toolNumber` (29 to 61, or
/// `kOtherTool`), and the host's own identifier in `*hostToolID` unless that is null. Returns the
/// host error, 0 for success; a host that does not tell its tool gives 0 with nothing written. A
/// failed conversion to the tool's name is returned too, but a number is written all the same.
/// Throws the host's code as a `std::uint32_t` where a suite cannot be acquired.
/// REQUIRES: `toolNumber` is not null.
int PlayeventGetActiveTool(int* toolNumber, int* hostToolID);

/// The diameter of the current tool's brush, truncated to a whole number of whatever unit the host
/// reports. Returns the host error, 0 for success, and leaves `*size` alone where the host does not
/// tell its tool or the tool has no brush. Throws like `PlayeventGetActiveTool`.
/// REQUIRES: `size` is not null.
int PlayeventGetBrushSize(int* size);
