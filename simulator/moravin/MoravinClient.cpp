// The framework's public C functions, in a library that may be absent.
#include "simulator/moravin/Framework.h"

using simulator::theFramework;

std::int16_t InstallMoravinHandlers(MoravinMessageHandler messageHandler, MoravinDeviceHandler,
                                    MoravinDeviceHandler) {
  return theFramework().install(messageHandler);
}

std::uint16_t RegisterMoravinClient(std::uint32_t signature, const char* name, std::uint32_t mode,
                                    std::uint32_t mask) {
  return theFramework().registerClient(signature, name, mode, mask);
}

void UnregisterMoravinClient(std::uint16_t client) { theFramework().unregisterClient(client); }

void CleanupMoravinHandlers() { theFramework().cleanup(); }
