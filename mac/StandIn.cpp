#include "mac/StandIn.h"

#include <CoreFoundation/CoreFoundation.h>
#include <pthread.h>

#include <deque>
#include <mutex>
#include <utility>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

constexpr std::uint32_t kProduct = 1;

struct Message {
  std::uint32_t type;
  MoravinDeviceState state;
};

/// Never destroyed: the device thread may use it until the process ends.
class StandIn {
 public:
  void install(MoravinMessageHandler handler) {
    const std::lock_guard lock(mutex_);
    removeSource();
    CFRunLoopSourceContext context = {};
    context.info = this;
    context.perform = [](void* self) { static_cast<StandIn*>(self)->deliver(); };
    source_ = CFRunLoopSourceCreate(kCFAllocatorDefault, 0, &context);
    loop_ = CFRunLoopGetCurrent();
    CFRunLoopAddSource(loop_, source_, kCFRunLoopCommonModes);
    handler_ = handler;
    state_.installed = true;
    state_.installedOnMain = pthread_main_np() != 0;
  }

  std::uint16_t registerClient() {
    const std::lock_guard lock(mutex_);
    return state_.client = ++lastClient_;
  }

  void unregisterClient(std::uint16_t client) {
    const std::lock_guard lock(mutex_);
    if (state_.client == client) state_.client = 0;
  }

  void cleanup() {
    const std::lock_guard lock(mutex_);
    removeSource();
    handler_ = nullptr;
  }

  void send(const Message& message) {
    const std::lock_guard lock(mutex_);
    if (source_ == nullptr) return;
    ++state_.sent;
    messages_.push_back(message);
    CFRunLoopSourceSignal(source_);
    CFRunLoopWakeUp(loop_);
  }

  StandInState state() {
    const std::lock_guard lock(mutex_);
    return state_;
  }

 private:
  void removeSource() {
    if (source_ == nullptr) return;
    CFRunLoopSourceInvalidate(source_);
    CFRelease(source_);
    source_ = nullptr;
    messages_.clear();
  }

  // The handler runs without the lock: it may call the framework.
  void deliver() {
    std::unique_lock lock(mutex_);
    while (handler_ != nullptr && !messages_.empty()) {
      Message message = messages_.front();
      messages_.pop_front();
      ++state_.delivered;
      const MoravinMessageHandler handler = handler_;
      lock.unlock();
      handler(kProduct, message.type, &message.state);
      lock.lock();
    }
  }

  std::mutex mutex_;
  StandInState state_ = {};
  std::uint16_t lastClient_ = 0;
  MoravinMessageHandler handler_ = nullptr;
  CFRunLoopRef loop_ = nullptr;
  CFRunLoopSourceRef source_ = nullptr;
  std::deque<Message> messages_;
};

StandIn& standIn() {
  static StandIn& only = *new StandIn;
  return only;
}

}  // namespace

EXPORTED std::int16_t InstallMoravinHandlers(MoravinMessageHandler messageHandler,
                                             MoravinDeviceHandler, MoravinDeviceHandler) {
  standIn().install(messageHandler);
  return 0;
}

EXPORTED std::uint16_t RegisterMoravinClient(std::uint32_t, const char*, std::uint32_t,
                                             std::uint32_t) {
  return standIn().registerClient();
}

EXPORTED void UnregisterMoravinClient(std::uint16_t client) { standIn().unregisterClient(client); }

EXPORTED void CleanupMoravinHandlers() { standIn().cleanup(); }

EXPORTED void mrvStandInSend(std::uint32_t messageType, const MoravinDeviceState* state) {
  standIn().send({messageType, *state});
}

EXPORTED StandInState mrvStandInRead() { return standIn().state(); }
