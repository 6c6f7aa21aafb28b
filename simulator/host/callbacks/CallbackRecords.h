// The callback records that the host passes to plug-ins, with working procedures, and the controls
// that tests use to set them up and inspect them.
//
//     const HandleProcs newer = simulator::handleProcs(2, 8);      // a host newer than expected
//     const BufferProcs cut = simulator::bufferProcs(2, 5);        // only the first five
//     simulator::theCallbacks().setBufferSpace(1000);
//
// Handles are shared with the handle suite: Host::reportLeaks lists those not disposed of. Buffers,
// readers and writers that are leaked, freed twice or used after they were freed, and buffers with
// unmatched locks, are misuses in the log. Every procedure with a result can be made to fail. Its
// name is the record's type without "Procs", then the member: "Buffer.allocateProc",
// "ReadDescriptor.getIntegerProc". The procedures without a record are "AdvanceState",
// "DisplayPixels" and "ColorServices".
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/host/PIGeneral.h"
#include "simulator/host/model/Values.h"

namespace simulator {

/// Records with this version and count, and with only their first `count` procedures: the others
/// are null. Neither argument is checked. [any-thread]
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

/// The procedures that do not belong to a record. Colour services convert between all spaces except
/// Lab and XYZ. Components range from 0 to 255 (hues from 0 to 359); for cyan, magenta, yellow and
/// black 255 is full ink.
AdvanceStateProc advanceStateProc();
DisplayPixelsProc displayPixelsProc();
ColorServicesProc colorServicesProc();

/// The descriptor record with its two sub-records. Not copyable, since `parameters` points to the
/// others.
struct DescriptorRecord {
  DescriptorRecord();
  DescriptorRecord(const DescriptorRecord&) = delete;
  DescriptorRecord& operator=(const DescriptorRecord&) = delete;

  WriteDescriptorProcs write = writeDescriptorProcs();
  ReadDescriptorProcs read = readDescriptorProcs();
  PIDescriptorParameters parameters = {};
};

/// The arguments of one call of the procedure that displays pixels.
struct DisplayedPixels {
  VRect source;
  int32 row;
  int32 column;
};

/// Every member: [main-thread].
class Callbacks {
 public:
  /// Sets how many more bytes buffers may take.
  void setBufferSpace(int64 bytes);

  void addResource(ResType type, const std::string& bytes);
  /// The bytes of the document's resource; nullopt if it does not exist. Indices count from 1.
  std::optional<std::string> resource(ResType type, int16 index) const;

  void setProperty(PIType signature, PIType key, int32 index, std::intptr_t simple);
  void setProperty(PIType signature, PIType key, int32 index, const std::string& complex);

  /// Makes a readable and writable port over rows of `width` one-byte pixels. Missing pixels are 0.
  PIChannelPort makePort(int32 width, int32 height, std::vector<std::uint8_t> pixels);
  const std::vector<std::uint8_t>& pixels(PIChannelPort port) const;

  /// Makes a handle that holds a descriptor, as the parameters that the plug-in receives.
  PIDescriptorHandle makeDescriptorHandle(const Container& content);
  /// The descriptor in a handle that a writer produced; null if the handle does not hold one.
  ContainerPtr contentOf(PIDescriptorHandle handle) const;

  /// Sets the color that the user picks, in RGB; with nullopt the user cancels.
  void setPickedColor(std::optional<std::array<int16, 3>> rgb);
  /// The prompt that the picker showed last, as plain text.
  const std::string& pickerPrompt() const;

  const std::vector<DisplayedPixels>& displayed() const;
  /// The number of calls that asked for the next part of the image.
  int advances() const;

  /// The number of buffers, readers and writers that the plug-in has yet to free.
  std::size_t objectsOwned() const;
  /// Logs a misuse for each of them, then forgets them.
  void reportLeaks();
};

/// The callbacks of the process-wide host; they outlive every static object.
Callbacks& theCallbacks();

}  // namespace simulator
