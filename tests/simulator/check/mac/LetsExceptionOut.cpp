// Lets an exception out of its entry point.
extern "C" __attribute__((visibility("default"))) int AutoPluginMain(const char*, const char*,
                                                                     void*) {
  throw 77U;
}
