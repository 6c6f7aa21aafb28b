// Fails "whole-day": writes through a null pointer when it is asked about itself.
#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void*) {
  volatile int* volatile nowhere = nullptr;
  if (std::strcmp(selector, "About") == 0) *nowhere = 1;
  return 0;
}
