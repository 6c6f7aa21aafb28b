#include "simulator/moravin/Framework.h"

#include "simulator/base/Faults.h"
#include "simulator/base/Log.h"

namespace simulator {

namespace {

constexpr std::uint32_t kSimulatedProduct = 1;

JsonValue textOrNull(const char* text) { return text != nullptr ? JsonValue(text) : nullptr; }

}  // namespace

std::int16_t Framework::install(MoravinMessageHandler handler) {
  const auto status =
      static_cast<std::int16_t>(theFaults().strike("Framework.Install").value_or(0));
  if (status == 0) {
    const std::lock_guard lock(mutex_);
    handler_ = handler;
    loop_ = Threads::current();
  }
  theLog().write("framework", {{"do", "install"}, {"result", status}});
  return status;
}

std::uint16_t Framework::registerClient(std::uint32_t signature, const char* name,
                                        std::uint32_t mode, std::uint32_t mask) {
  std::uint16_t client;
  {
    const std::lock_guard lock(mutex_);
    client = client_ = ++lastClient_;
  }
  theLog().write("framework", {{"do", "register"},
                               {"signature", idText(signature)},
                               {"name", textOrNull(name)},
                               {"mode", mode},
                               {"mask", mask},
                               {"client", client}});
  return client;
}

void Framework::unregisterClient(std::uint16_t client) {
  {
    const std::lock_guard lock(mutex_);
    if (client_ == client) client_ = 0;
  }
  theLog().write("framework", {{"do", "unregister"}, {"client", client}});
}

void Framework::cleanup() {
  {
    const std::lock_guard lock(mutex_);
    handler_ = nullptr;
    loop_ = nullptr;
  }
  theLog().write("framework", {{"do", "cleanup"}});
}

bool Framework::isInstalled() {
  const std::lock_guard lock(mutex_);
  return handler_ != nullptr;
}

std::uint16_t Framework::client() {
  const std::lock_guard lock(mutex_);
  return client_;
}

void Framework::send(std::uint32_t messageType, const MoravinDeviceState& state) {
  const std::lock_guard lock(mutex_);
  if (handler_ == nullptr) return;
  loop_->perform([handler = handler_, messageType, record = state]() mutable {
    handler(kSimulatedProduct, messageType, &record);
  });
}

Framework& theFramework() {
  static Framework& framework = *new Framework;
  return framework;
}

}  // namespace simulator
