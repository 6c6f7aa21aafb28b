// The memory manager: relocatable blocks, and checks of how the plug-in uses them.
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace simulator {

/// Handles point to master pointers, as on the platform. A master pointer is never reused: it stays
/// null after its block is disposed of. A handle that was disposed of or never issued is reported
/// as a misuse by `procedure`, and CallError{paramErr} is thrown. [any-thread]
class MemoryHandles {
 public:
  /// Makes a block of `size` zero bytes. `maker` names the procedure that returns it to the
  /// plug-in; null if the plug-in does not have to free the block. The string must outlive the
  /// block.
  Handle make(std::size_t size, const char* maker);
  /// Makes a block that contains `bytes`.
  Handle make(std::string_view bytes, const char* maker);

  void dispose(Handle handle, const char* procedure);
  std::size_t size(Handle handle, const char* procedure);
  /// Changes the block's size to `size` bytes; it always moves. Bytes that fit are kept, new bytes
  /// are zero. Throws CallError{memFullErr} if the block is locked.
  void resize(Handle handle, std::size_t size, const char* procedure);
  /// Locks or unlocks the block and returns whether it was locked.
  bool setLock(Handle handle, bool locked, const char* procedure);
  /// A copy of the block's bytes.
  std::string bytes(Handle handle, const char* procedure);

  /// Reports a misuse for each block that the plug-in has not freed, once per block.
  void reportLeaks();
  /// The number of blocks that the plug-in still has to free.
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
  std::unordered_map<Handle, Block> blocks_;  // a disposed block remains, without data
  std::uint64_t last_ = 0;
};

/// The blocks of this process. Never destroyed, so static destructors may use them. [any-thread]
MemoryHandles& theMemoryHandles();

}  // namespace simulator
