// The one pending request to play a host action.
//
// The host lets a plug-in play actions only during a call from the host. A setter records a
// request, which the next "Do It" plays. A later request replaces a pending one. [main-thread]
#pragma once

/// The values of `gPlayFunction`; any other value plays nothing.
enum : int {
  kPlayNothing = 0,
  kPlayMasterDiameter = 1,  ///< set the diameter, then select the tool again
  kPlayHardness = 2,
  kPlaySpacing = 3,
  kPlayNewBrushSize = 5
};

extern int gPlayFunction;      ///< the pending request; setters write it last
extern double gDoubleValue;    ///< its value: pixels for the diameter, otherwise percent
extern long long gActiveTool;  ///< the host's identifier of the tool to select, 0 for none

/// Plays and clears the pending request, unless the mouse is down. Returns the host error, 0 for
/// success or if nothing was played; the errors of setting a diameter and selecting the tool are
/// merged by OR. Throws the host's code as a `std::uint32_t` if a suite cannot be acquired; the
/// request then stays pending.
int PlayQueuedEvent();

/// Requests a brush diameter in pixels, clamped to 1 to 2500 (NaN is kept), followed by the
/// selection of the tool `hostToolID` unless it is 0. Returns 0.
int PlayeventDynamicSetMasterDiameter(double diameter, int hostToolID);

/// Requests a call of `SetNewBrushSize` (BrushSize.h).
void PlayeventWinSetMasterDiameter();

/// Returns whether a request is pending.
bool IsPlayEventBusy();

/// Sets one property of the current brush. `key` is the property's string ID; the low 32 bits of
/// `unitID` are the unit of `value`. Returns the host error, 0 for success. Throws what
/// `PlayQueuedEvent` throws.
int PlayeventDynamicSetProperty(char* key, unsigned long unitID, double value);

/// Selects the tool in the low 32 bits of `gActiveTool`. Returns the host error, 0 for success or
/// if `gActiveTool` is 0. Throws what `PlayQueuedEvent` throws.
int PlayeventSelectBrush();
