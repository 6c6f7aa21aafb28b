// The simulated device framework: the registered client, its message handler, and the thread on
// which the handler is called.
#pragma once

#include <MoravinClient/MoravinClient.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

#include "simulator/macos/RunLoops.h"

namespace simulator {

class Framework {
 public:
  // The implementations of the framework's four functions. [any-thread]
  std::int16_t install(MoravinMessageHandler handler);
  std::uint16_t registerClient(std::uint32_t signature, const char* name, std::uint32_t mode,
                               std::uint32_t mask);
  void unregisterClient(std::uint16_t client);
  void cleanup();

  /// Whether a message handler is installed. [any-thread]
  bool isInstalled();

  /// The id of the client registered last; 0 if there is none. [any-thread]
  std::uint16_t client();

  /// Queues a message for the installed handler, on the thread that installed it. Does nothing if
  /// no handler is installed. [any-thread]
  void send(std::uint32_t messageType, const MoravinDeviceState& state);

 private:
  std::mutex mutex_;
  MoravinMessageHandler handler_ = nullptr;
  std::shared_ptr<RunLoop> loop_;
  std::uint16_t lastClient_ = 0;
  std::uint16_t client_ = 0;
};

/// The framework of this process. Never destroyed, so threads may use it until the process ends.
/// [any-thread]
Framework& theFramework();

}  // namespace simulator
