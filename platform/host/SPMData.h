// The message that the host passes to a plug-in's entry point with each call.
#pragma once

#include "SPBasic.h"

struct SPMessageData {
  int32 SPCheck;
  SPPluginRef self;
  void* globals;
  SPBasicSuite* basic;
};
