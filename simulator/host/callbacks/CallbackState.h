// The state that the procedures of the host's callback records share.
#pragma once

#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <tuple>

#include "simulator/host/callbacks/CallbackRecords.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/model/ObjectTable.h"

namespace simulator {

struct BufferBody {
  std::unique_ptr<char[]> bytes;
  int64 size = 0;
  int locks = 0;
};

struct Plane {
  int32 width = 0;
  int32 height = 0;
  std::vector<std::uint8_t> pixels;
};

struct PortBody {
  std::shared_ptr<Plane> plane;
  bool writable = false;
};

struct ReaderBody {
  NestedContainer content;
  std::size_t next = 0;  ///< index of the item that getKeyProc returns next
  OSErr firstError = noErr;
};

struct WriterBody {
  ContainerPtr content = std::make_shared<Container>();
};

template <>
struct ObjectKind<BufferID> {
  using Body = BufferBody;
  static constexpr ObjectTag tag = ObjectTag::buffer;
};

template <>
struct ObjectKind<PIChannelPort> {
  using Body = PortBody;
  static constexpr ObjectTag tag = ObjectTag::channelPort;
};

template <>
struct ObjectKind<PIReadDescriptor> {
  using Body = ReaderBody;
  static constexpr ObjectTag tag = ObjectTag::reader;
};

template <>
struct ObjectKind<PIWriteDescriptor> {
  using Body = WriterBody;
  static constexpr ObjectTag tag = ObjectTag::writer;
};

struct ResourceBody {
  ResType type;
  Handle handle;  ///< owned by the host
};

struct PropertyBody {
  std::intptr_t simple = 0;
  std::optional<std::string> complex = {};
};

using PropertyName = std::tuple<PIType, PIType, int32>;  // signature, key, index

struct CallbackState {
  ObjectTable<BufferID> buffers;
  int64 bufferSpace = int64{64} << 20;
  std::vector<ResourceBody> resources;
  std::map<PropertyName, PropertyBody> properties;
  ObjectTable<PIChannelPort> ports;
  ObjectTable<PIReadDescriptor> readers;
  ObjectTable<PIWriteDescriptor> writers;
  std::optional<std::array<int16, 3>> pickedColor;
  std::string pickerPrompt;
  std::vector<DisplayedPixels> displayed;
  int advances = 0;
};

/// The process-wide state; it outlives every static object.
CallbackState& callbackState();

/// `record` with `version` and `count` in its head and with only its first `count` procedures; the
/// others are null. REQUIRES: a record is two int16 padded to a pointer's size, then pointers.
template <class Record>
Record cutRecord(Record record, int16 version, int16 count) {
  constexpr std::size_t kProcedures = sizeof record / sizeof(void*) - 1;
  const int16 head[2] = {version, count};
  auto* bytes = reinterpret_cast<char*>(&record);
  std::memcpy(bytes, head, sizeof head);
  const auto kept = std::min(static_cast<std::size_t>(std::max<int16>(count, 0)), kProcedures);
  std::memset(bytes + (kept + 1) * sizeof(void*), 0, (kProcedures - kept) * sizeof(void*));
  return record;
}

// The procedures of the records enter the host like those of its suites, but no suite must be held.

inline OSErr callbackCall(const char* procedure, ProcedureBody body) {
  return hostCall<OSErr>(SuiteId::basic, procedure, body);
}

inline OSErr callbackRelease(const char* procedure, ProcedureBody body) {
  return hostRelease<OSErr>(SuiteId::basic, procedure, body);
}

template <class Result, class Body>
Result callbackAnswer(const char* procedure, Result otherwise, Body&& body) {
  return hostAnswer<Result>(SuiteId::basic, procedure, otherwise, body);
}

/// For procedures without a result, which cannot be made to fail.
inline void callbackDo(const char* procedure, ProcedureBody body) {
  const HostEntry entry(SuiteId::basic, procedure);
  outcome(body);
}

}  // namespace simulator
