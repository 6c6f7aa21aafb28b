// What the host passes along with every call of a plug-in's entry point.
#pragma once

#include "SPBasic.h"

struct SPMessageData {
  int32 SPCheck;
  SPPluginRef self;
  void* globals;
  SPBasicSuite* basic;
};
