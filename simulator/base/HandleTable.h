// Opaque handles that are recognised as stale after their value is erased.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace simulator {

/// Gives each value a handle that looks like a pointer but is never dereferenced. The handle of an
/// erased value stays stale even after its slot is reused, because each handle contains the slot's
/// generation. Not synchronised.
template <class T>
class HandleTable {
 public:
  const void* insert(T value) {
    Slot& slot = takeSlot();
    slot.value = std::move(value);
    slot.live = true;
    ++live_;
    return handleOf(slot);
  }

  /// The value; null if the handle is stale or was never issued. The pointer stays valid until the
  /// value is erased.
  T* find(const void* handle) {
    Slot* slot = slotOf(handle);
    return slot != nullptr ? &slot->value : nullptr;
  }

  /// Destroys the value. Does nothing if the handle is stale or was never issued.
  void erase(const void* handle) {
    Slot* slot = slotOf(handle);
    if (slot == nullptr) return;
    slot->value = T{};
    slot->live = false;
    ++slot->generation;
    --live_;
    free_.push_back(slot);
  }

  /// The number of values that are not erased.
  std::size_t live() const { return live_; }

  /// Calls `visit` with each value, in slot order.
  template <class Visit>
  void forEach(Visit visit) {
    for (const auto& slot : slots_) {
      if (slot->live) visit(slot->value);
    }
  }

 private:
  struct Slot {
    T value{};
    std::uint64_t index = 0;
    std::uint32_t generation = 1;
    bool live = false;
  };

  // A handle's bits, from the lowest: 4 zero bits, as in an aligned pointer; 24 bits of slot index;
  // the generation.
  static constexpr int kIndexBits = 24;
  static constexpr int kAlignBits = 4;

  Slot& takeSlot() {
    if (!free_.empty()) {
      Slot& slot = *free_.back();
      free_.pop_back();
      return slot;
    }
    slots_.push_back(std::make_unique<Slot>());
    slots_.back()->index = slots_.size() - 1;
    return *slots_.back();
  }

  static const void* handleOf(const Slot& slot) {
    const std::uint64_t generation = slot.generation;
    return reinterpret_cast<const void*>((generation << (kIndexBits + kAlignBits)) |
                                         (slot.index << kAlignBits));
  }

  Slot* slotOf(const void* handle) {
    const auto bits = reinterpret_cast<std::uint64_t>(handle);
    const std::size_t index = (bits >> kAlignBits) & ((std::uint64_t{1} << kIndexBits) - 1);
    if (index >= slots_.size()) return nullptr;
    Slot& slot = *slots_[index];
    return slot.live && handleOf(slot) == handle ? &slot : nullptr;
  }

  std::vector<std::unique_ptr<Slot>> slots_;
  std::vector<Slot*> free_;
  std::size_t live_ = 0;
};

}  // namespace simulator
