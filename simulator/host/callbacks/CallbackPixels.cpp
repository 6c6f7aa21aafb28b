// Channel ports: the pixels of a channel, one byte each.
#include "simulator/host/callbacks/CallbackState.h"

namespace simulator {

namespace {

constexpr int32 kBitsPerPixel = 8;

VRect intersection(const VRect& a, const VRect& b) {
  VRect both = {std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
                std::min(a.right, b.right)};
  both.bottom = std::max(both.bottom, both.top);
  both.right = std::max(both.right, both.left);
  return both;
}

bool isEmpty(const VRect& rect) { return rect.bottom <= rect.top || rect.right <= rect.left; }

// Maps a destination coordinate to the source, rounded down to a pixel.
int32 scaled(int32 at, int32 from, int32 fromEnd, int32 to, int32 toEnd) {
  return static_cast<int32>(to + int64{at - from} * (toEnd - to) / (fromEnd - from));
}

class Memory {
 public:
  Memory(const PixelMemoryDesc& memory, const VRect& area) : memory_(memory), area_(area) {
    const int32 bits = memory.rowBits | memory.colBits | memory.bitOffset;
    if (memory.depth != kBitsPerPixel || bits % 8 != 0 || memory.data == nullptr) {
      throw CallError{paramErr};
    }
  }

  std::uint8_t& at(int32 row, int32 column) const {
    const int64 bits = int64{memory_.bitOffset} + int64{memory_.rowBits} * (row - area_.top) +
                       int64{memory_.colBits} * (column - area_.left);
    return static_cast<std::uint8_t*>(memory_.data)[bits / 8];
  }

 private:
  PixelMemoryDesc memory_;
  VRect area_;
};

PortBody& find(const char* procedure, PIChannelPort port) {
  return callbackState().ports.at(port, procedure);
}

VRect bounds(const Plane& plane) { return {0, 0, plane.height, plane.width}; }

std::uint8_t& pixel(Plane& plane, int32 row, int32 column) {
  return plane.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(plane.width) +
                      static_cast<std::size_t>(column)];
}

PSScaling scalingOr(const PSScaling* scaling, const Plane& plane) {
  const PSScaling wanted = scaling ? *scaling : PSScaling{bounds(plane), bounds(plane)};
  const VRect inside = intersection(wanted.sourceRect, bounds(plane));
  const VRect& source = wanted.sourceRect;
  const bool fits = inside.top == source.top && inside.left == source.left &&
                    inside.bottom == source.bottom && inside.right == source.right;
  if (!fits || isEmpty(source) || isEmpty(wanted.destinationRect)) throw CallError{paramErr};
  return wanted;
}

void copyOut(Plane& plane, const PSScaling& scaling, const VRect& area, const Memory& memory) {
  const VRect& from = scaling.destinationRect;
  const VRect& to = scaling.sourceRect;
  for (int32 row = area.top; row < area.bottom; ++row) {
    const int32 sourceRow = scaled(row, from.top, from.bottom, to.top, to.bottom);
    for (int32 column = area.left; column < area.right; ++column) {
      memory.at(row, column) =
          pixel(plane, sourceRow, scaled(column, from.left, from.right, to.left, to.right));
    }
  }
}

OSErr readPixels(PIChannelPort port, const PSScaling* scaling, const VRect* writeRect,
                 const PixelMemoryDesc* memory, VRect* wroteRect) {
  constexpr const char* procedure = "ChannelPort.readPixelsProc";
  return callbackCall(procedure, [&] {
    Plane& plane = *find(procedure, port).plane;
    const VRect& wanted = destination(writeRect);
    const PSScaling used = scalingOr(scaling, plane);
    const VRect area = intersection(wanted, used.destinationRect);
    copyOut(plane, used, area, Memory(destination(memory), wanted));
    if (wroteRect != nullptr) *wroteRect = area;
  });
}

OSErr writeBasePixels(PIChannelPort port, const VRect* writeRect, const PixelMemoryDesc* memory) {
  constexpr const char* procedure = "ChannelPort.writeBasePixelsProc";
  return callbackCall(procedure, [&] {
    const PortBody& body = find(procedure, port);
    if (!body.writable) throw CallError{paramErr};
    const VRect& wanted = destination(writeRect);
    const VRect area = intersection(wanted, bounds(*body.plane));
    const Memory source(destination(memory), wanted);
    for (int32 row = area.top; row < area.bottom; ++row) {
      for (int32 column = area.left; column < area.right; ++column) {
        pixel(*body.plane, row, column) = source.at(row, column);
      }
    }
  });
}

OSErr readPortForWritePort(PIChannelPort* readPort, PIChannelPort writePort) {
  constexpr const char* procedure = "ChannelPort.readPortForWritePortProc";
  return callbackCall(procedure, [&] {
    destination(readPort) =
        callbackState().ports.add({find(procedure, writePort).plane, false}, nullptr);
  });
}

constexpr ChannelPortProcs kChannelPortProcs = {
    .channelPortProcsVersion = 0,
    .numChannelPortProcs = 0,
    .readPixelsProc = readPixels,
    .writeBasePixelsProc = writeBasePixels,
    .readPortForWritePortProc = readPortForWritePort,
};

}  // namespace

ChannelPortProcs channelPortProcs(int16 version, int16 count) {
  return cutRecord(kChannelPortProcs, version, count);
}

PIChannelPort Callbacks::makePort(int32 width, int32 height, std::vector<std::uint8_t> pixels) {
  pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  auto plane = std::make_shared<Plane>(Plane{width, height, std::move(pixels)});
  return callbackState().ports.add({std::move(plane), true}, nullptr);
}

const std::vector<std::uint8_t>& Callbacks::pixels(PIChannelPort port) const {
  return find("Callbacks.pixels", port).plane->pixels;
}

}  // namespace simulator
