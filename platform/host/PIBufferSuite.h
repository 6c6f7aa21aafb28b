// The buffer suites.
#pragma once

#include <cstddef>

#include "PIGeneral.h"

inline constexpr char kPSBufferSuite[] = "Photoshop Buffer Suite for Plug-ins";
inline constexpr int32 kPSBufferSuiteVersion1 = 1;
inline constexpr int32 kPSBufferSuiteVersion2 = 2;
inline constexpr char kPSBufferProcsSuite[] = "Photoshop Buffer Procs for Plug-ins";
inline constexpr int32 kPSBufferProcsSuiteVersion = 2;

struct PSBufferSuite1 {
  Ptr (*New)(uint32* requestedSize, uint32 minimumSize);
  void (*Dispose)(Ptr* buffer);
  uint32 (*GetSize)(Ptr buffer);
  uint32 (*GetSpace)();
};

struct PSBufferSuite2 {
  Ptr (*New)(std::size_t* requestedSize, std::size_t minimumSize);
  void (*Dispose)(Ptr* buffer);
  std::size_t (*GetSize)(Ptr buffer);
  std::size_t (*GetSpace)();
};
