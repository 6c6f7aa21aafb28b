// Process-wide state of the translation of device messages into events (MrvDeviceEvents).
#pragma once

#include <cstdint>

/// The axis values relayed last, in device counts and in the plug-in's axis order: translation x,
/// y, z, rotation x, y, z. Written only on the device thread.
extern std::int16_t axisData[6];

/// While true, axis messages update `axisData` and post no event. Nothing in the plug-in sets it;
/// it is an extension point. Read on the device thread.
extern bool gIn3DTool;
