// What the translation of device messages keeps for the life of the process.
#pragma once

#include <cstdint>

/// The axis values relayed last, as the plug-in sees them: translation x, y, z, rotation x, y, z.
/// Written on the device thread alone.
extern std::int16_t axisData[6];

/// While true, axis messages update `axisData` and post nothing. A hook: nothing in the plug-in
/// sets it. Read on the device thread.
extern bool gIn3DTool;
