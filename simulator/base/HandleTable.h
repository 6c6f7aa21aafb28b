// Opaque handles that know when they are stale.
#pragma once

#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

namespace simulator {

/// Gives each value a handle that looks like a pointer and is never dereferenced. The handle of an
/// erased value finds nothing, also where its place is in use again. Not synchronized.
template <class T>
class HandleTable {
 public:
  const void* insert(T value) {
    const std::size_t index = takeSlot();
    slots_[index].value = std::move(value);
    slots_[index].live = true;
    ++live_;
    return handleOf(index);
  }

  /// The value, null where the handle is stale or was never given out.
  T* find(const void* handle) {
    Slot* slot = slotOf(handle);
    return slot != nullptr ? &slot->value : nullptr;
  }

  void erase(const void* handle) {
    Slot* slot = slotOf(handle);
    if (slot == nullptr) return;
    slot->value = T{};
    slot->live = false;
    ++slot->generation;
    --live_;
    free_.push_back(static_cast<std::size_t>(slot->index));
  }

  std::size_t live() const { return live_; }

  template <class Visit>
  void forEach(Visit visit) {
    for (Slot& slot : slots_) {
      if (slot.live) visit(slot.value);
    }
  }

 private:
  struct Slot {
    T value{};
    std::uint64_t index = 0;
    std::uint32_t generation = 1;
    bool live = false;
  };

  // A handle: the generation above 28 bits of index, aligned like a pointer.
  static constexpr int kIndexBits = 24;
  static constexpr int kAlignBits = 4;

  std::size_t takeSlot() {
    if (!free_.empty()) {
      const std::size_t index = free_.back();
      free_.pop_back();
      return index;
    }
    slots_.emplace_back();
    slots_.back().index = slots_.size() - 1;
    return slots_.size() - 1;
  }

  const void* handleOf(std::size_t index) const {
    const std::uint64_t generation = slots_[index].generation;
    return reinterpret_cast<const void*>((generation << (kIndexBits + kAlignBits)) |
                                         (index << kAlignBits));
  }

  Slot* slotOf(const void* handle) {
    const auto bits = reinterpret_cast<std::uint64_t>(handle);
    const std::size_t index = (bits >> kAlignBits) & ((std::uint64_t{1} << kIndexBits) - 1);
    if (index >= slots_.size() || !slots_[index].live || handleOf(index) != handle) return nullptr;
    return &slots_[index];
  }

  std::deque<Slot> slots_;
  std::vector<std::size_t> free_;
  std::size_t live_ = 0;
};

}  // namespace simulator
