// The host's objects of one kind, and the watch over how a plug-in treats them.
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

/// The low bits of a handle, by which the host recognises what it stands for.
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

/// What the host keeps behind a handle of each type, and its tag.
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
  using Body = Reference;
  static constexpr ObjectTag tag = ObjectTag::reference;
};

template <>
struct ObjectKind<ASZString> {
  using Body = StringBody;
  static constexpr ObjectTag tag = ObjectTag::string;
};

/// The words for a tag in a misuse, such as "channel port"; "object" for an unknown one.
const char* objectKindName(ObjectTag tag);

/// A handle is a number that is never handed out twice: it tells the object's kind and ordinal and
/// is no address, so that a plug-in cannot read through it.
template <class Handle>
class ObjectTable {
 public:
  using Kind = ObjectKind<Handle>;
  using Body = typename Kind::Body;

  /// Keeps `body`. `maker` is the procedure that hands the object to the plug-in; null for an
  /// object that the plug-in does not have to free.
  Handle add(Body body, const char* maker) {
    const std::uint64_t ordinal = ++last_;
    live_.emplace(ordinal, Record{std::move(body), maker});
    return reinterpret_cast<Handle>(kBase + (ordinal << 4) + kTag);
  }

  /// The body behind `handle`. A handle that is not alive is a misuse by `procedure` and ends it
  /// with paramErr; so does null, which is no misuse.
  Body& at(Handle handle, const char* procedure) {
    if (handle == nullptr) throw CallError{paramErr};
    return find(handle, procedure)->second.body;
  }

  /// The body behind `handle`, null where it is not alive.
  const Body* peek(Handle handle) const {
    const auto found = live_.find(ordinalOf(handle));
    return found == live_.end() || !isOurs(handle) ? nullptr : &found->second.body;
  }

  /// Frees the object; as `at`, but null is a misuse, too.
  void free(Handle handle, const char* procedure) { live_.erase(find(handle, procedure)); }

  /// One misuse for each object that the plug-in made and did not free; forgets them all.
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

  /// How many objects the plug-in has yet to free.
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
