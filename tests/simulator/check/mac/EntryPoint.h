// The entry point of a plug-in that does nothing.
#pragma once

extern "C" __attribute__((visibility("default"))) int AutoPluginMain(const char*, const char*,
                                                                     void*) {
  return 0;
}
