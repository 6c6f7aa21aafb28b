// Construction and destruction of the navigator.
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <type_traits>

#include "navigate/Navigate2D.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;
using namespace testing_support;

static_assert(!std::is_polymorphic_v<Navigate2D>);

const Json kSuppression = {{"t", 0}, {"what", "suppression"}, {"seconds", 0.1}};
const Json kRegister = {{"t", 0}, {"what", "refreshCallback"}, {"do", "register"}};
const Json kUnregister = {{"t", 0}, {"what", "refreshCallback"}, {"do", "unregister"}};
const Json kDeviceTypes = eventTypes({{"mrvE", 1}, {"mrvE", 2}, {"mrvE", 5}});
const Json kInstall = {{"t", 0}, {"what", "handler"}, {"do", "install"}, {"types", kDeviceTypes}};

class Navigate2DLifetime : public testing::Test {
 protected:
  std::vector<Json> linesWithoutHostCalls() {
    std::vector<Json> lines = machine.drain();
    std::erase_if(lines, [](const Json& l) { return l["what"] == "suite" || l["what"] == "get"; });
    return lines;
  }

  Machine machine;
};

TEST_F(Navigate2DLifetime, KeepsTheFieldsAtTheirOffsets) {
  const Navigate2D& navigator = Navigate2D::Instance();
  const auto at = [&](const auto& member) {
    return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&navigator);
  };
  EXPECT_EQ(at(navigator.m_refreshWait), 0);
  EXPECT_EQ(at(navigator.m_zoomWithScrollWheel), 2);
  EXPECT_EQ(at(navigator.m_deviceHandlerRef), 8);
  EXPECT_EQ(at(navigator.m_mouseDownHandlerRef), 16);
}

TEST_F(Navigate2DLifetime, CreatesOneNavigatorInAFixedOrder) {
  Navigate2D& navigator = Navigate2D::Instance();
  EXPECT_EQ(linesWithoutHostCalls(), (std::vector<Json>{kSuppression, kRegister, kInstall}));
  EXPECT_EQ(&Navigate2D::Instance(), &navigator);
  EXPECT_TRUE(machine.drain().empty());
  EXPECT_EQ(navigator.m_refreshWait, 0);
  EXPECT_NE(navigator.m_deviceHandlerRef, nullptr);
  EXPECT_EQ(navigator.m_mouseDownHandlerRef, nullptr);
}

TEST_F(Navigate2DLifetime, ReadsThePreferenceBeforeInstallingAnything) {
  theFaults().add({"Basic.AcquireSuite", -5, 0, 1});
  EXPECT_THROW(Navigate2D::Instance(), std::uint32_t);
  EXPECT_TRUE(linesWithoutHostCalls().empty());
  // The next call tries again.
  EXPECT_NO_THROW(Navigate2D::Instance());
  EXPECT_EQ(linesWithoutHostCalls(), (std::vector<Json>{kSuppression, kRegister, kInstall}));
}

TEST_F(Navigate2DLifetime, KeepsTheReferenceToTheReceiverIfASecondInstallationIsRefused) {
  Navigate2D& navigator = Navigate2D::Instance();
  const EventHandlerRef receiver = navigator.m_deviceHandlerRef;
  machine.drain();
  navigator.installDeviceHandler();
  EXPECT_EQ(navigator.m_deviceHandlerRef, receiver);
  EXPECT_TRUE(machine.drain().empty());
  EXPECT_EQ(RemoveEventHandler(receiver), noErr);
  EXPECT_EQ(theEventManager().installed(), 0U);
}

TEST_F(Navigate2DLifetime, ReadsThePreferenceOnce) {
  HostSetup setup;
  setup.zoomWithScrollWheel = true;
  writeHostFiles(setup, machine.preferences());
  EXPECT_TRUE(Navigate2D::Instance().m_zoomWithScrollWheel);
  setup.zoomWithScrollWheel = false;
  writeHostFiles(setup, machine.preferences());
  EXPECT_TRUE(Navigate2D::Instance().m_zoomWithScrollWheel);
  EXPECT_FALSE(Navigate2D::getZoomWithScrollWheel());
}

TEST_F(Navigate2DLifetime, EndsByUnregisteringOnlyTheRefreshCallback) {
  alignas(Navigate2D) std::byte storage[sizeof(Navigate2D)] = {};
  auto* navigator = new (storage) Navigate2D;
  navigator->InstallMouseDownHandler();
  machine.drain();
  std::destroy_at(navigator);
  EXPECT_EQ(machine.drain(), std::vector<Json>{kUnregister});
  EXPECT_EQ(theEventManager().installed(), 2U);  // both handlers stay until the process ends
}

}  // namespace
