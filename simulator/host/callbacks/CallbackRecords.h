// The callback records that the host hands to plug-ins, with procedures that work, and what the one
// who plays the host sees of them.
//
//     const HandleProcs newer = simulator::handleProcs(2, 8);      // a host newer than expected
//     const BufferProcs cut = simulator::bufferProcs(2, 5);        // only the first five
//     procedures simulator::theCallbacks().setBufferSpace(1000);
//
// Handles are those of the handle suite (Host::reportLeaks names the ones that were not disposed
// of). Buffers, readers and writers that are leaked, given back twice or used afterwards, and
// buffers whose locks do not match, are misuses in the log. Every procedure with a result can be
// ordered to fail, under its record's type without "Procs" and its member: "Buffer.allocateProc",
// "ReadDescriptor.getIntegerProc"; those without a record are "AdvanceState", "DisplayPixels" and
// "ColorServices".
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/host/PIGeneral.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// Records of any version, and with as many procedures as `count` says: those from there on are
/// null. [any-thread]
BufferProcs bufferProcs(int16 version = kCurrentBufferProcsVersion,
                        int16 count = kCurrentBufferProcsCount);
ResourceProcs resourceProcs(int16 version = kCurrentResourceProcsVersion,
                            int16 count = kCurrentResourceProcsCount);
HandleProcs handleProcs(int16 version = kCurrentHandleProcsVersion,
                        int16 count = kCurrentHandleProcsCount);
PropertyProcs propertyProcs(int16 version = kCurrentPropertyProcsVersion,
                            int16 count = kCurrentPropertyProcsCount);
ChannelPortProcs channelPortProcs(int16 version = kCurrentChannelPortProcsVersion,
                                  int16 count = kCurrentChannelPortProcsCount);
ReadDescriptorProcs readDescriptorProcs(int16 version = kCurrentReadDescriptorProcsVersion,
                                        int16 count = kCurrentReadDescriptorProcsCount);
WriteDescriptorProcs writeDescriptorProcs(int16 version = kCurrentWriteDescriptorProcsVersion,
                                          int16 count = kCurrentWriteDescriptorProcsCount);

/// The procedures that come without a record. Colour services know every space but Lab and XYZ, on
/// scales of 0 to 255 (hues: 0 to 359; cyan, magenta, yellow and black: 255 is full ink).
AdvanceStateProc advanceStateProc();
DisplayPixelsProc displayPixelsProc();
ColorServicesProc colorServicesProc();

/// The descriptor record with its two sub-records. It stays where it is: the record points into it.
struct DescriptorRecord {
  DescriptorRecord();
  DescriptorRecord(const DescriptorRecord&) = delete;
  DescriptorRecord& operator=(const DescriptorRecord&) = delete;

  WriteDescriptorProcs write = writeDescriptorProcs();
  ReadDescriptorProcs read = readDescriptorProcs();
  PIDescriptorParameters parameters = {};
};

/// One call of the procedure that displays pixels.
struct DisplayedPixels {
  VRect source;
  int32 row;
  int32 column;
};

/// All members: [main-thread].
class Callbacks {
 public:
  /// How many bytes all buffers together may have.
  void setBufferSpace(int64 bytes);

  void addResource(ResType type, const std::string& bytes);
  /// What the document's resource holds, none where there is no such one. Indices count from 1.
  std::optional<std::string> resource(ResType type, int16 index) const;

  void setProperty(PIType signature, PIType key, int32 index, std::intptr_t simple);
  void setProperty(PIType signature, PIType key, int32 index, const std::string& complex);

  /// A port that can be read and written, over pixels of one byte, `width` to a row.
  PIChannelPort makePort(int32 width, int32 height, std::vector<std::uint8_t> pixels);
  const std::vector<std::uint8_t>& pixels(PIChannelPort port) const;

  /// A handle with a descriptor in it, given to the plug-in as its parameters.
  PIDescriptorHandle makeDescriptorHandle(const Container& content);
  /// The descriptor in a handle that a writer left, null where it holds none.
  ContainerPtr contentOf(PIDescriptorHandle handle) const;

  /// What the user picks next, in RGB; none: the user cancels.
  void setPickedColor(std::optional<std::array<int16, 3>> rgb);
  /// The prompt that the picker showed last, as plain text.
  const std::string& pickerPrompt() const;

  const std::vector<DisplayedPixels>& displayed() const;
  /// How often the plug-in has asked for the next part of the image.
  int advances() const;

  /// How many buffers, readers and writers the plug-in has yet to give back.
  std::size_t objectsOwned() const;
  /// One misuse for each of them. Then they are forgotten.
  void reportLeaks();
};

/// The callbacks of the one host of the process; they outlive every static object.
Callbacks& theCallbacks();

}  // namespace simulator
