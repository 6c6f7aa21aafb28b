#include <array>
#include <cstdint>
#include <vector>

#include "simulator/host/callbacks/CallbackRecords.h"
#include "tests/hostutil/CallbackHost.h"

namespace {

using hostutil_test::CallbackTest;

class CallbackPixels : public CallbackTest {
 protected:
  PixelMemoryDesc memory(int32 width) { return {bytes.data(), width * 8, 8, 0, 8}; }

  const ChannelPortProcs ports = simulator::channelPortProcs();
  const PIChannelPort port = callbacks.makePort(3, 2, {1, 2, 3, 4, 5, 6});
  std::array<std::uint8_t, 6> bytes = {};
};

TEST_F(CallbackPixels, AreReadOnlyInsideThePort) {
  const VRect wanted = {1, 1, 3, 4};
  const PixelMemoryDesc into = memory(3);
  VRect wrote = {};
  EXPECT_EQ(ports.readPixelsProc(port, nullptr, &wanted, &into, &wrote), 0);
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 6>{5, 6, 0, 0, 0, 0}));
  EXPECT_EQ(wrote.top, 1);
  EXPECT_EQ(wrote.left, 1);
  EXPECT_EQ(wrote.bottom, 2);
  EXPECT_EQ(wrote.right, 3);
}

TEST_F(CallbackPixels, AreScaledToTheNearestPixel) {
  const PSScaling scaling = {{0, 0, 2, 3}, {0, 0, 1, 6}};
  const VRect wanted = {0, 0, 1, 6};
  const PixelMemoryDesc into = memory(6);
  EXPECT_EQ(ports.readPixelsProc(port, &scaling, &wanted, &into, nullptr), 0);
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 6>{1, 1, 2, 2, 3, 3}));
}

TEST_F(CallbackPixels, AreWrittenAndReadThroughAReadPort) {
  const VRect area = {0, 0, 1, 3};
  bytes = {7, 8, 9};
  const PixelMemoryDesc from = memory(3);
  EXPECT_EQ(ports.writeBasePixelsProc(port, &area, &from), 0);
  EXPECT_EQ(callbacks.pixels(port), (std::vector<std::uint8_t>{7, 8, 9, 4, 5, 6}));
  PIChannelPort readPort = nullptr;
  EXPECT_EQ(ports.readPortForWritePortProc(&readPort, port), 0);
  EXPECT_EQ(ports.writeBasePixelsProc(readPort, &area, &from), -50);
  bytes = {};
  EXPECT_EQ(ports.readPixelsProc(readPort, nullptr, &area, &from, nullptr), 0);
  EXPECT_EQ(bytes[2], 9);
}

TEST_F(CallbackPixels, AreRefusedInOtherDepthsAndOutsideThePort) {
  const VRect area = {0, 0, 1, 3};
  PixelMemoryDesc deep = memory(3);
  deep.depth = 16;
  EXPECT_EQ(ports.readPixelsProc(port, nullptr, &area, &deep, nullptr), -50);
  const PSScaling outside = {{0, 0, 3, 3}, {0, 0, 1, 1}};
  const PixelMemoryDesc into = memory(3);
  EXPECT_EQ(ports.readPixelsProc(port, &outside, &area, &into, nullptr), -50);
}

}  // namespace
