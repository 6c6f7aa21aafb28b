// The device maker's framework as the simulated device sees it: the client that registered, the
// handler that it installed, and the thread that the handler is called on.
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
  // What the framework's four functions do. [any-thread]
  std::int16_t install(MoravinMessageHandler handler);
  std::uint16_t registerClient(std::uint32_t signature, const char* name, std::uint32_t mode,
                               std::uint32_t mask);
  void unregisterClient(std::uint16_t client);
  void cleanup();

  /// The client registered last, 0 where there is none. [any-thread]
  std::uint16_t client();

  /// Delivers a message on the thread that installed its handlers last; nothing where none are
  /// installed. [any-thread]
  void send(std::uint32_t messageType, const MoravinDeviceState& state);

 private:
  std::mutex mutex_;
  MoravinMessageHandler handler_ = nullptr;
  std::shared_ptr<RunLoop> loop_;
  std::uint16_t lastClient_ = 0;
  std::uint16_t client_ = 0;
};

/// The framework of the process; it outlives every static object.
Framework& theFramework();

}  // namespace simulator
