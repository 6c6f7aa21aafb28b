#include "simulator/macos/MemoryHandles.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "simulator/base/CallError.h"
#include "simulator/base/Log.h"

namespace simulator {

namespace {

// One byte longer than `size`: an empty block must have an address, too.
std::unique_ptr<char[]> zeroed(std::size_t size) { return std::make_unique<char[]>(size + 1); }

}  // namespace

Handle MemoryHandles::make(std::size_t size, const char* maker) {
  const std::lock_guard lock(mutex_);
  Block block = {std::make_unique<Ptr>(), zeroed(size), size, ++last_, maker, false};
  *block.master = block.data.get();
  const Handle handle = block.master.get();
  blocks_.emplace(handle, std::move(block));
  return handle;
}

Handle MemoryHandles::make(std::string_view bytes, const char* maker) {
  const Handle handle = make(bytes.size(), maker);
  std::copy(bytes.begin(), bytes.end(), *handle);
  return handle;
}

void MemoryHandles::dispose(Handle handle, const char* procedure) {
  const std::lock_guard lock(mutex_);
  Block& block = find(handle, procedure);
  block.data.reset();
  *block.master = nullptr;
}

std::size_t MemoryHandles::size(Handle handle, const char* procedure) {
  const std::lock_guard lock(mutex_);
  return find(handle, procedure).size;
}

void MemoryHandles::resize(Handle handle, std::size_t size, const char* procedure) {
  const std::lock_guard lock(mutex_);
  Block& block = find(handle, procedure);
  if (block.locked) throw CallError{memFullErr};
  auto data = zeroed(size);
  std::memcpy(data.get(), block.data.get(), std::min(size, block.size));
  block.data = std::move(data);
  block.size = size;
  *block.master = block.data.get();
}

bool MemoryHandles::setLock(Handle handle, bool locked, const char* procedure) {
  const std::lock_guard lock(mutex_);
  return std::exchange(find(handle, procedure).locked, locked);
}

std::string MemoryHandles::bytes(Handle handle, const char* procedure) {
  const std::lock_guard lock(mutex_);
  const Block& block = find(handle, procedure);
  return {block.data.get(), block.size};
}

void MemoryHandles::reportLeaks() {
  const std::lock_guard lock(mutex_);
  std::vector<std::pair<std::uint64_t, const char*>> leaks;
  for (auto& [handle, block] : blocks_) {
    if (block.data && block.maker) leaks.emplace_back(block.ordinal, block.maker);
    block.maker = nullptr;
  }
  std::sort(leaks.begin(), leaks.end());
  for (const auto& [ordinal, maker] : leaks) {
    theLog().misuse(fmt::format("leaked: handle {}, made by {}", ordinal, maker));
  }
}

std::size_t MemoryHandles::owned() const {
  const std::lock_guard lock(mutex_);
  return static_cast<std::size_t>(
      std::count_if(blocks_.begin(), blocks_.end(),
                    [](const auto& entry) { return entry.second.data && entry.second.maker; }));
}

MemoryHandles::Block& MemoryHandles::find(Handle handle, const char* procedure) {
  const auto found = blocks_.find(handle);
  if (found != blocks_.end() && found->second.data) return found->second;
  const std::string who = found == blocks_.end() ? "the handle given is not the host's"
                                                 : fmt::format("handle {} was disposed of before",
                                                               found->second.ordinal);
  theLog().misuse(fmt::format("{}: {}", procedure, who));
  throw CallError{paramErr};
}

MemoryHandles& theMemoryHandles() {
  static MemoryHandles& handles = *new MemoryHandles;
  return handles;
}

}  // namespace simulator
