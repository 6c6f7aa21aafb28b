// In a file of its own: a program that defines DoAbout itself replaces it.
#include <Carbon/Carbon.h>

#include "plugin/AutoPluginMain.h"

void DoAbout(SPPluginRef, int) {
  static constexpr unsigned char kNote[] =
      "\x3F>NOT IMPLEMENTED void DoAbout(SPPluginRef plugin, int dialogID)";
  static_assert(sizeof kNote == 2 + 0x3F);
  DebugStr(kNote);
}

void ShowAbout() {}
