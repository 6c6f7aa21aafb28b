// Makes the brush smaller and larger by typing the host's own shortcuts. [main-thread]
#pragma once

/// Chooses the keys by the current keyboard layout: those of the German and French layouts, and the
/// US ones for any other, variants of those two included. `language` is accepted and ignored.
void InitBrushSize(char* language);

/// Takes one sample of twist in device counts; positive makes the brush larger. Samples below 20
/// counts either way are ignored, and all of them while the tool bar waits to be redrawn, there is
/// no document window, or the tool in hand has no brush. About every 500 counts type one key.
/// Throws the host's code as a `std::uint32_t` where a suite cannot be acquired.
void AdjustBrushSize(int delta);

/// Ends a gesture: what was gathered is dropped, and the next sample asks for the tool again.
void ResetBrushSizeAccumulator();

/// Does nothing: the place where a queued new brush size would be set.
void SetNewBrushSize();

/// Posts the press and the release of a key to the main event queue. `keyCode` is a virtual key
/// code, `modifiers` the Carbon bits. Returns 0; failures of single steps are ignored.
int SimulateKeyboardEvent(unsigned int keyCode, char character, unsigned int modifiers);
