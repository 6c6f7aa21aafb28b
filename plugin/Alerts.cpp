// What would be shown to the user: nothing. Apart from the entry point, because the warnings about
// the host's callbacks need no more of the shell than this.
#include "plugin/AutoPluginMain.h"

void ShowAbout() {}

int ShowVersionAlert(const unsigned char*) { return 0; }
