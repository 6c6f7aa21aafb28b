// One host action that waits to be played.
//
// The host lets a plug-in play actions only while it has called into it. A setter records what to
// play; the next "Do It" plays it. A later request replaces one that still waits. [main-thread]
#pragma once

/// The requests that `gPlayFunction` may hold; any other value plays nothing.
enum : int {
  kPlayNothing = 0,
  kPlayMasterDiameter = 1,  ///< set the diameter, then select the tool again
  kPlayHardness = 2,
  kPlaySpacing = 3,
  kPlayNewBrushSize = 5
};

extern int gPlayFunction;      ///< the request that waits; written last of the three
extern double gDoubleValue;    ///< its value: pixels for the diameter, else percent
extern long long gActiveTool;  ///< the host's identifier of the tool to select again; 0: none

/// Plays the request that waits, unless the mouse is down, and clears it. Returns the host error of
/// what was played, 0 where nothing was. Throws the host's code as a `std::uint32_t` where a suite
/// cannot be acquired; the request then waits on.
int PlayQueuedEvent();

/// Requests a brush diameter in pixels, kept within 1 to 2500 (a NaN passes as it is), and the
/// selection of the tool `hostToolID` after it, 0 for none. Returns 0.
int PlayeventDynamicSetMasterDiameter(double diameter, int hostToolID);

/// Requests the new-brush-size hook.
void PlayeventWinSetMasterDiameter();

/// Whether a request waits.
bool IsPlayEventBusy();

/// Sets one property of the current brush. `key` is the property's string ID, `unitID` the unit of
/// `value`. Returns the host error, 0 for success. Throws like `PlayQueuedEvent`.
int PlayeventDynamicSetProperty(char* key, unsigned long unitID, double value);

/// Selects the tool `gActiveTool`. Returns the host error, 0 for success or where there is none.
int PlayeventSelectBrush();
