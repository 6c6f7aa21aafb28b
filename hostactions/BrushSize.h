// Makes the brush smaller and larger by typing the host's shortcuts. [main-thread]
#pragma once

/// Selects the keys of the current keyboard layout: those of the German or the French layout, or
/// the US keys for any other, including variants of German and French. `language` is ignored.
void InitBrushSize(char* language);

/// Takes one sample of twist in device counts; positive makes the brush larger. Types one key about
/// every 500 counts. Ignores samples between -20 and 20, and every sample while the tool bar is
/// waiting to be redrawn, there is no document window, or the current tool has no brush. Only the
/// low 16 bits of `delta` are added. Asks the host for the tool at the first sample of a gesture
/// and ignores the sample if the host returns an error. Throws the host's code as a `std::uint32_t`
/// if a suite cannot be acquired.
void AdjustBrushSize(int delta);

/// Ends a gesture: clears the accumulated counts; the next sample asks for the tool again.
void ResetBrushSizeAccumulator();

/// Placeholder for setting a queued brush size: does nothing.
void SetNewBrushSize();

/// Posts the press and the release of a key to the main event queue. `keyCode` is a virtual key
/// code, `modifiers` the Carbon modifiers. Returns 0; an event that cannot be created is skipped.
int SimulateKeyboardEvent(unsigned int keyCode, char character, unsigned int modifiers);
