// The handle suite: relocatable blocks.
#pragma once

#include "PIGeneral.h"

inline constexpr char kPSHandleSuite[] = "Photoshop Handle Suite for Plug-ins";
inline constexpr int32 kPSHandleSuiteVersion2 = 2;

/// [main-thread]
struct PSHandleSuite2 {
  /// Makes a block of `size` bytes; returns null if there is not enough memory.
  Handle (*New)(int32 size);
  void (*Dispose)(Handle handle);
  /// Disposes of a handle made by the platform, such as an alias.
  void (*DisposeRegularHandle)(Handle handle);
  void (*SetLock)(Handle handle, Boolean lock, Ptr* address, Boolean* oldLock);
  int32 (*GetSize)(Handle handle);
  OSErr (*SetSize)(Handle handle, int32 newSize);
};
