// The document that the live window shows: a landscape, drawn by the program, on which the host's
// brush paints.
#pragma once

#include <cstdint>
#include <vector>

namespace simulator::live {

struct PixelRect {
  int x = 0, y = 0, width = 0, height = 0;
};

/// Pixels with the bytes red, green, blue and opacity, in this order in memory. [main-thread]
class Picture {
 public:
  static constexpr int kWidth = 1280;
  static constexpr int kHeight = 800;
  static constexpr int kBytesInRow = kWidth * int{sizeof(std::uint32_t)};

  /// Draws the landscape, the same each time.
  Picture();

  const std::uint32_t* pixels() const { return pixels_.data(); }

  /// Paints a round spot; a diameter below 1 counts as 1. Returns the pixels that may have changed,
  /// which are none if the spot is outside.
  PixelRect paint(double x, double y, double diameter);

 private:
  std::uint32_t& at(int x, int y);

  std::vector<std::uint32_t> pixels_;
};

}  // namespace simulator::live
