// The host's objects of one kind; detects leaks and invalid handles.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/host/model/HostErrors.h"
#include "simulator/host/model/Values.h"

namespace simulator {

struct StringBody {
  std::u16string text;
  std::uint32_t references = 1;
};

/// The low bits of a handle, which identify the kind of its object.
enum class ObjectTag : std::uintptr_t {
  descriptor = 1,
  list,
  reference,
  string,
  buffer,
  channelPort,
  reader,
  writer,
};

/// The body that the host stores for each type of handle, and its tag.
template <class Handle>
struct ObjectKind;

template <>
struct ObjectKind<PIActionDescriptor> {
  using Body = ContainerPtr;
  static constexpr ObjectTag tag = ObjectTag::descriptor;
};

template <>
struct ObjectKind<PIActionList> {
  using Body = ContainerPtr;
  static constexpr ObjectTag tag = ObjectTag::list;
};

template <>
struct ObjectKind<PIActionReference> {
  using Body = SharedReference;
  static constexpr ObjectTag tag = ObjectTag::reference;
};

template <>
struct ObjectKind<ASZString> {
  using Body = StringBody;
  static constexpr ObjectTag tag = ObjectTag::string;
};

/// The name of a tag in a misuse, such as "channel port"; "object" for an unknown tag.
const char* objectKindName(ObjectTag tag);

/// A handle is a number that encodes the object's kind and ordinal. It is never handed out twice,
/// and it is not an address, so a plug-in cannot read through it.
template <class Handle>
class ObjectTable {
 public:
  using Kind = ObjectKind<Handle>;
  using Body = typename Kind::Body;

  /// Stores `body` and returns its handle. `maker` is the procedure that hands the object to the
  /// plug-in, a string that outlives the table; null if the plug-in does not have to free the
  /// object.
  Handle add(Body body, const char* maker) {
    const std::uint64_t ordinal = ++last_;
    live_.emplace(ordinal, Record{std::move(body), maker});
    return reinterpret_cast<Handle>(kBase + (ordinal << 4) + kTag);
  }

  /// The body of `handle`. Throws paramErr if the handle is null or not alive; the latter is also
  /// logged as a misuse by `procedure`.
  Body& at(Handle handle, const char* procedure) {
    if (handle == nullptr) throw CallError{paramErr};
    return find(handle, procedure)->second.body;
  }

  /// The body of `handle`; null if it is not alive.
  const Body* peek(Handle handle) const {
    const auto found = live_.find(ordinalOf(handle));
    return found == live_.end() || !isOurs(handle) ? nullptr : &found->second.body;
  }

  /// Frees the object. Throws and logs as `at` does, but null is a misuse too.
  void free(Handle handle, const char* procedure) { live_.erase(find(handle, procedure)); }

  /// Logs a misuse for each object that the plug-in has yet to free, then forgets all objects.
  void reportLeaks() {
    std::vector<std::pair<std::uint64_t, const char*>> leaks;
    for (const auto& [ordinal, record] : live_) {
      if (record.maker) leaks.emplace_back(ordinal, record.maker);
    }
    std::sort(leaks.begin(), leaks.end());
    for (const auto& [ordinal, maker] : leaks) {
      theLog().misuse(fmt::format("leaked: {}, made by {}", name(ordinal), maker));
    }
    live_.clear();
  }

  /// The number of objects that the plug-in has yet to free.
  std::size_t owned() const {
    return static_cast<std::size_t>(std::count_if(
        live_.begin(), live_.end(), [](const auto& entry) { return entry.second.maker; }));
  }

 private:
  struct Record {
    Body body;
    const char* maker;
  };
  using Map = std::unordered_map<std::uint64_t, Record>;

  static constexpr std::uintptr_t kBase = 0x600000000000;
  static constexpr auto kTag = static_cast<std::uintptr_t>(Kind::tag);

  static std::uintptr_t number(Handle handle) { return reinterpret_cast<std::uintptr_t>(handle); }
  static std::uint64_t ordinalOf(Handle handle) { return (number(handle) - kBase) >> 4; }
  static bool isOurs(Handle handle) { return (number(handle) & 0xF) == kTag; }
  static std::string name(std::uint64_t ordinal) {
    return fmt::format("{} {}", objectKindName(Kind::tag), ordinal);
  }

  typename Map::iterator find(Handle handle, const char* procedure) {
    const auto found = live_.find(ordinalOf(handle));
    if (isOurs(handle) && found != live_.end()) return found;
    theLog().misuse(fmt::format("{}: {}", procedure, complaint(handle)));
    throw CallError{paramErr};
  }

  std::string complaint(Handle handle) const {
    const std::uintptr_t value = number(handle);
    const auto tag = static_cast<ObjectTag>(value & 0xF);
    const char* kind = objectKindName(Kind::tag);
    if (value == 0) return fmt::format("null is no {}", kind);
    if (value < kBase) return fmt::format("{:#x} is no {}", value, kind);
    if (tag != Kind::tag) return fmt::format("{} given for a {}", objectKindName(tag), kind);
    if (ordinalOf(handle) > last_) return fmt::format("{:#x} is no {}", value, kind);
    return fmt::format("{} was freed before", name(ordinalOf(handle)));
  }

  Map live_;
  std::uint64_t last_ = 0;
};

}  // namespace simulator
