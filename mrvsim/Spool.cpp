#include "mrvsim/Spool.h"

#include <array>

namespace simulator {

namespace {

constexpr std::size_t kMostInMemory = 65536;

}  // namespace

void Spool::append(std::string_view text) {
  held_ += text;
  if (held_.size() < kMostInMemory) return;
  file_.append(held_);
  inFile_ += held_.size();
  held_.clear();
}

void Spool::each(const std::function<void(std::string_view)>& take) const {
  std::array<char, kMostInMemory> piece;
  for (std::uint64_t at = 0; at < inFile_;) {
    const std::size_t size = file_.read(at, piece.data(), piece.size());
    take({piece.data(), size});
    at += size;
  }
  take(held_);
}

}  // namespace simulator
