#include "mrvsim/live/Session.h"

#include <fmt/format.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <stdexcept>

#include "mrvsim/live/ScenarioJson.h"

namespace simulator::live {

namespace {

constexpr std::size_t kHeadSize = 5;

}  // namespace

void Session::start(const Json& setup) {
  // What a plug-in that has ended did not read must not reach the next one.
  outgoing_.clear();
  answered_ = asked_;
  isOpen_ = true;
  order(fmt::format("{} {}", order::kStart, setup.dump()));
}

void Session::take(const Json& step, std::int64_t inputTime) {
  if (!isOpen_) return;
  order(fmt::format("{} {} {} {}", order::kTakeStep, inputTime, kindOf(step), step.dump()));
}

void Session::reach(std::int64_t milliseconds) {
  if (isOpen_) order(fmt::format("{} {}", order::kReach, milliseconds));
}

void Session::finish() {
  if (isOpen_) order(std::string(1, order::kFinish));
}

void Session::order(std::string_view text) {
  outgoing_ += text;
  outgoing_ += '\n';
  sendSome();
}

void Session::sendSome() {
  const ssize_t written = write(process_.orders.get(), outgoing_.data(), outgoing_.size());
  if (written > 0) outgoing_.erase(0, static_cast<std::size_t>(written));
}

void Session::exchange(const Receiver& receive) {
  if (!outgoing_.empty()) sendSome();
  while (receiveSome(receive)) {
  }
}

void Session::catchUp(const Receiver& receive) {
  if (isOpen_) order(fmt::format("{} {}", order::kAnswer, ++asked_));
  while (isOpen_ && answered_ < asked_) {
    waitForMessages();
    exchange(receive);
  }
}

void Session::waitForEnd(const Receiver& receive) {
  while (isOpen_) {
    waitForMessages();
    exchange(receive);
  }
}

void Session::waitForMessages() const {
  constexpr int kAtMost = 100;
  std::array<pollfd, 2> ends = {pollfd{process_.messages.get(), POLLIN, 0},
                                {process_.orders.get(), POLLOUT, 0}};
  poll(ends.data(), outgoing_.empty() ? 1 : 2, kAtMost);
}

bool Session::receiveSome(const Receiver& receive) {
  std::array<char, 65536> buffer;
  const ssize_t size = read(process_.messages.get(), buffer.data(), buffer.size());
  if (size == 0) throw std::runtime_error("live: the plug-in's process has gone");
  if (size < 0) return false;
  incoming_.append(buffer.data(), static_cast<std::size_t>(size));
  deliver(receive);
  return true;
}

void Session::deliver(const Receiver& receive) {
  std::size_t at = 0;
  while (incoming_.size() - at >= kHeadSize) {
    std::uint32_t size = 0;
    std::memcpy(&size, incoming_.data() + at + 1, sizeof size);
    if (incoming_.size() - at - kHeadSize < size) break;
    const char kind = incoming_[at];
    const std::string text = incoming_.substr(at + kHeadSize, size);
    at += kHeadSize + size;
    if (kind == message::kFailed) throw std::runtime_error(text);
    if (kind == message::kAnswered) answered_ = std::stoull(text);
    if (kind == message::kEnded) isOpen_ = false;
    receive(kind, text);
  }
  incoming_.erase(0, at);
}

}  // namespace simulator::live
