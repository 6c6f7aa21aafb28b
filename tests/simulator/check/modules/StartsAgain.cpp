// Fails "start-twice": registers at every start-up.
#include <MoravinClient/MoravinClient.h>

#include "PlugIn.h"

ENTRY_POINT(const char*, const char* selector, void*) {
  static std::uint16_t client = 0;
  if (InstallMoravinHandlers == nullptr) return 0;
  if (isStartup(selector)) {
    client = RegisterMoravinClient(0x3842494D, nullptr, 1, 0x3F00);
  } else {
    UnregisterMoravinClient(client);
  }
  return 0;
}
