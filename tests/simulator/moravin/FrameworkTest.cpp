// The simulated device framework, by its four functions and by what the simulated device does.
#include <Carbon/Carbon.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "simulator/moravin/Framework.h"
#include "tests/support/DeviceRecords.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;
using testing::ElementsAre;

/// A call of the message handler.
struct Received {
  std::uint32_t product;
  std::uint32_t type;
  std::uint16_t button;
  std::thread::id thread;
};

class DeviceFramework : public testing::Test {
 protected:
  ~DeviceFramework() override { CleanupMoravinHandlers(); }

  static void receive(std::uint32_t product, std::uint32_t type, void* record) {
    auto* state = static_cast<MoravinDeviceState*>(record);
    received.push_back({product, type, state->button, std::this_thread::get_id()});
    state->button = 0;  // The record is the handler's own copy.
  }

  static void receiveElsewhere(std::uint32_t, std::uint32_t, void*) { ++receivedElsewhere; }

  static std::int16_t install(MoravinMessageHandler handler = receive) {
    return InstallMoravinHandlers(handler, nullptr, nullptr);
  }

  static void send(std::uint16_t button) {
    theFramework().send(kMoravinMessageDeviceState, buttonRecord(1, button, 1));
  }

  /// Runs what is queued for this thread.
  static void runLoop() { EXPECT_NE(RunCurrentEventLoop(0), noErr); }

  static std::vector<std::uint16_t> buttons() {
    std::vector<std::uint16_t> numbers;
    for (const Received& message : received) numbers.push_back(message.button);
    return numbers;
  }

  static inline std::vector<Received> received;
  static inline int receivedElsewhere = 0;
  Machine machine;
};

TEST_F(DeviceFramework, NumbersItsClientsFromOneAndNeverTwiceAlike) {
  EXPECT_EQ(theFramework().client(), 0);
  EXPECT_EQ(RegisterMoravinClient(1, "", 0, 0), 1);
  EXPECT_EQ(RegisterMoravinClient(1, "", 0, 0), 2);
  EXPECT_EQ(theFramework().client(), 2);
  UnregisterMoravinClient(2);
  EXPECT_EQ(theFramework().client(), 0);
  EXPECT_EQ(RegisterMoravinClient(1, "", 0, 0), 3);
}

TEST_F(DeviceFramework, KeepsItsClientWhileOthersEnd) {
  RegisterMoravinClient(1, "", 0, 0);
  RegisterMoravinClient(1, "", 0, 0);
  UnregisterMoravinClient(1);
  UnregisterMoravinClient(3);
  EXPECT_EQ(theFramework().client(), 2);
}

TEST_F(DeviceFramework, LogsTheArgumentsOfEachCall) {
  install();
  RegisterMoravinClient(fourCharCode("8BIM"), "name", 2, 0x3FFF);
  RegisterMoravinClient(7, nullptr, 0, 0);
  UnregisterMoravinClient(9);
  CleanupMoravinHandlers();
  const Json common = {{"t", 0}, {"what", "framework"}};
  const auto line = [&](Json fields) {
    Json whole = common;
    whole.update(fields);
    return whole;
  };
  EXPECT_THAT(machine.lines(),
              ElementsAre(line({{"do", "install"}, {"result", 0}}),
                          line({{"do", "register"},
                                {"signature", "8BIM"},
                                {"name", "name"},
                                {"mode", 2},
                                {"mask", 0x3FFF},
                                {"client", 1}}),
                          line({{"do", "register"},
                                {"signature", "0x00000007"},
                                {"name", nullptr},
                                {"mode", 0},
                                {"mask", 0},
                                {"client", 2}}),
                          line({{"do", "unregister"}, {"client", 9}}), line({{"do", "cleanup"}})));
}

TEST_F(DeviceFramework, QueuesMessagesForTheLoopOfTheThreadThatInstalledTheHandler) {
  install();
  std::thread([] {
    send(1);
    send(2);
  }).join();
  EXPECT_TRUE(received.empty());
  runLoop();
  EXPECT_THAT(buttons(), ElementsAre(1, 2));
  for (const Received& message : received) {
    EXPECT_EQ(message.product, 1U);
    EXPECT_EQ(message.type, std::uint32_t{kMoravinMessageDeviceState});
    EXPECT_EQ(message.thread, std::this_thread::get_id());
  }
}

TEST_F(DeviceFramework, HandsEachMessageACopyOfTheRecord) {
  install();
  MoravinDeviceState state = buttonRecord(1, 5, 1);
  theFramework().send(kMoravinMessageDeviceState, state);
  state.button = 6;
  runLoop();
  EXPECT_THAT(buttons(), ElementsAre(5));
  EXPECT_EQ(state.button, 6);
}

TEST_F(DeviceFramework, SendsMessagesToTheHandlerThatWasInstalledLast) {
  install();
  install(receiveElsewhere);
  send(1);
  runLoop();
  EXPECT_EQ(receivedElsewhere, 1);
  std::thread([] { install(); }).join();
  send(2);
  runLoop();
  EXPECT_EQ(receivedElsewhere, 1);
  EXPECT_TRUE(received.empty()) << "the message waits for the other thread";
}

TEST_F(DeviceFramework, DropsMessagesWhileNoHandlerIsInstalled) {
  EXPECT_FALSE(theFramework().isInstalled());
  send(1);
  install();
  EXPECT_TRUE(theFramework().isInstalled());
  CleanupMoravinHandlers();
  EXPECT_FALSE(theFramework().isInstalled());
  send(2);
  runLoop();
  EXPECT_TRUE(received.empty());
}

TEST_F(DeviceFramework, DeliversWhatWasQueuedBeforeTheHandlerWasRemoved) {
  install();
  send(1);
  CleanupMoravinHandlers();
  runLoop();
  EXPECT_THAT(buttons(), ElementsAre(1));
}

TEST_F(DeviceFramework, KeepsNoHandlerThatItRefuses) {
  theFaults().add({"Framework.Install", -5, 0, 1});
  EXPECT_EQ(install(), -5);
  EXPECT_FALSE(theFramework().isInstalled());
  EXPECT_EQ(machine.lines().back(),
            (Json{{"t", 0}, {"what", "framework"}, {"do", "install"}, {"result", -5}}));
  EXPECT_EQ(install(), 0);
  EXPECT_TRUE(theFramework().isInstalled());
}

TEST_F(DeviceFramework, KeepsTheOldHandlerIfItRefusesAnother) {
  install();
  theFaults().add({"Framework.Install", -5, 0, 1});
  EXPECT_EQ(install(receiveElsewhere), -5);
  send(1);
  runLoop();
  EXPECT_THAT(buttons(), ElementsAre(1));
}

}  // namespace
