#include "mrvsim/report/Column.h"

#include <string_view>

namespace simulator {

namespace {

constexpr unsigned kGroupBits = 7;
constexpr std::uint64_t kGroupMask = 0x7F;
constexpr unsigned kMoreFollow = 0x80;

void appendNumber(std::string& bytes, std::uint64_t number) {
  for (; number > kGroupMask; number >>= kGroupBits) {
    bytes += static_cast<char>((number & kGroupMask) | kMoreFollow);
  }
  bytes += static_cast<char>(number);
}

void appendZeros(std::string& bytes, std::uint64_t zeros) {
  if (zeros == 0) return;
  bytes += '\0';
  appendNumber(bytes, zeros - 1);
}

std::uint64_t zigzag(std::int64_t value) {
  const auto bits = static_cast<std::uint64_t>(value);
  return value < 0 ? ~(bits << 1) : bits << 1;
}

std::int64_t unzigzag(std::uint64_t number) {
  return static_cast<std::int64_t>((number & 1) != 0 ? ~(number >> 1) : number >> 1);
}

std::string inBase64(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  constexpr std::size_t kBytesInGroup = 3;
  std::string text;
  text.reserve((bytes.size() + 2) / kBytesInGroup * 4);
  for (std::size_t at = 0; at < bytes.size(); at += kBytesInGroup) {
    const std::string_view group = bytes.substr(at, kBytesInGroup);
    unsigned bits = 0;
    for (std::size_t i = 0; i < kBytesInGroup; ++i) {
      bits = bits << 8 | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0U);
    }
    for (std::size_t i = 0; i <= kBytesInGroup; ++i) {
      text += i <= group.size() ? kDigits[bits >> (18 - 6 * i) & 0x3F] : '=';
    }
  }
  return text;
}

}  // namespace

void Column::append(std::int64_t value) {
  ++size_;
  std::int64_t rest = value;
  for (std::size_t i = 0; i < order(); ++i) {
    const std::int64_t difference = rest - lasts_[i];
    lasts_[i] = rest;
    rest = difference;
  }
  if (rest == 0) {
    ++zeros_;
    return;
  }
  appendZeros(bytes_, zeros_);
  zeros_ = 0;
  appendNumber(bytes_, zigzag(rest));
}

std::string Column::base64() const {
  std::string bytes = bytes_;
  appendZeros(bytes, zeros_);
  return inBase64(bytes);
}

std::uint64_t Column::Reader::nextNumber() {
  std::uint64_t number = 0;
  for (unsigned shift = 0;; shift += kGroupBits) {
    const auto byte = static_cast<unsigned char>(column_.bytes_[at_++]);
    number |= (byte & kGroupMask) << shift;
    if (byte < kMoreFollow) return number;
  }
}

std::int64_t Column::Reader::next() {
  std::int64_t value = 0;
  if (zeros_ > 0) {
    --zeros_;
  } else if (at_ < column_.bytes_.size()) {
    value = unzigzag(nextNumber());
    if (value == 0) zeros_ = nextNumber();
  }
  for (std::size_t i = column_.order(); i-- > 0;) value = sums_[i] += value;
  return value;
}

}  // namespace simulator
