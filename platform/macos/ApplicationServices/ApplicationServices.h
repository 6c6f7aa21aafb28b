// Umbrella header of the graphics services.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <CoreServices/CoreServices.h>
