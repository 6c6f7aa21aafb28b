#include "codegen/Terminology.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "hostutil/Strings.h"
#include "platform/FourCharCode.h"
#include "suites/Suites.h"

constexpr PSConst PSConstA[kPSConstCount] = {
#include "codegen/Terminology.inc"
};

namespace {

using Row = std::uint16_t;
constexpr Row kNoRow = 0xFFFF;

/// A hash table of each identifier's first row; `next` links the first row to the identifier's
/// other rows in table order.
struct Index {
  static constexpr unsigned kSlotBits = 13;  // one slot in five is taken, so probes stay short
  static constexpr std::size_t kSlots = std::size_t{1} << kSlotBits;

  std::array<Row, kSlots> first{};
  std::array<Row, kPSConstCount> next{};

  /// The slot of the identifier's first row, or the empty slot to store it in.
  constexpr std::size_t slot(std::uint32_t id) const {
    std::size_t place = (id * 0x9E3779B1u) >> (32 - kSlotBits);  // Knuth's multiplicative hash
    while (first[place] != kNoRow && PSConstA[first[place]].id != id) place = (place + 1) % kSlots;
    return place;
  }

  constexpr Index() {
    first.fill(kNoRow);
    next.fill(kNoRow);
    for (std::size_t row = kPSConstCount; row-- > 0;) {  // backwards: the lowest row comes first
      Row& head = first[slot(PSConstA[row].id)];
      next[row] = head;
      head = static_cast<Row>(row);
    }
  }
};

constexpr Index kIndex;

const char* publishedName(std::uint32_t id, const char* kind) {
  for (Row row = kIndex.first[kIndex.slot(id)]; row != kNoRow; row = kIndex.next[row]) {
    if (std::strstr(PSConstA[row].name, kind)) return PSConstA[row].name;
  }
  return nullptr;
}

bool readHostName(std::uint32_t id, char* buffer) {
  if (sPSActionControl->TypeIDToStringID(id, buffer, kNameSize) != 0) return false;
  buffer[kNameSize - 1] = '\0';
  return true;
}

IDName quotedCode(std::uint32_t id, char* buffer) {
  const char code[] = {'\'',
                       static_cast<char>(id >> 24),
                       static_cast<char>(id >> 16),
                       static_cast<char>(id >> 8),
                       static_cast<char>(id),
                       '\'',
                       '\0'};
  std::memcpy(buffer, code, sizeof code);
  const auto length = static_cast<std::size_t>(std::find(code, std::end(code), '\0') - code);
  return {{buffer, length}, NameKind::kCode};
}

}  // namespace

IDName nameOfID(std::uint32_t id, const char* kind, char* buffer) {
  if (isRuntimeID(id) && readHostName(id, buffer)) return {buffer, NameKind::kStringID};
  if (const char* name = publishedName(id, kind)) return {name, NameKind::kConstant};
  return quotedCode(id, buffer);
}

void LongToStr(std::int32_t id, const char* kind, char* out) {
  out[0] = '\0';
  char buffer[kNameSize];
  const std::string_view name = nameOfID(static_cast<std::uint32_t>(id), kind, buffer).text;
  std::memcpy(out, name.data(), name.size());
  out[name.size()] = '\0';
}

std::uint32_t PIUCharToID(const char* text) { return PIChar2Type(text); }
