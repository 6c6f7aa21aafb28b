// The memory manager: relocatable blocks, and the watch over how a plug-in treats them.
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace simulator {

/// Handles point to master pointers, as on the platform. A master pointer is never used again:
/// after its block is gone it is null for good. Procedures that are given a handle which is not
/// alive report a misuse, naming `procedure`, and throw CallError{paramErr}. [any-thread]
class MemoryHandles {
 public:
  /// A block of `size` zero bytes. `maker` is the procedure that hands it to the plug-in; null for
  /// a block that the plug-in does not have to free.
  Handle make(std::size_t size, const char* maker);
  /// A block that holds `bytes`.
  Handle make(std::string_view bytes, const char* maker);

  void dispose(Handle handle, const char* procedure);
  std::size_t size(Handle handle, const char* procedure);
  /// Keeps the block's bytes as far as they fit; new bytes are zero. The block moves.
  void resize(Handle handle, std::size_t size, const char* procedure);
  /// Sets the lock's state and returns the one before.
  bool setLock(Handle handle, bool locked, const char* procedure);
  /// A copy of the block's bytes.
  std::string bytes(Handle handle, const char* procedure);

  void reportLeaks();
  /// How many blocks the plug-in has yet to free.
  std::size_t owned() const;

 private:
  struct Block {
    std::unique_ptr<Ptr> master;
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
    std::uint64_t ordinal = 0;
    const char* maker = nullptr;
    bool locked = false;
  };

  Block& find(Handle handle, const char* procedure);

  mutable std::mutex mutex_;
  std::unordered_map<Handle, Block> blocks_;  // those disposed of stay, without data
  std::uint64_t last_ = 0;
};

/// The blocks of the process; they outlive every static object.
MemoryHandles& theMemoryHandles();

}  // namespace simulator
