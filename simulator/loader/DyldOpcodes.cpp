#include "simulator/loader/DyldOpcodes.h"

#include <fmt/format.h>

#include <utility>

namespace simulator {

namespace {

constexpr std::uint8_t kOpcodeMask = 0xF0;
constexpr std::uint8_t kImmediateMask = 0x0F;
constexpr std::uint64_t kPointerSize = 8;
constexpr int kPointerType = 1;

enum RebaseOpcode : std::uint8_t {
  kRebaseDone = 0x00,
  kRebaseSetType = 0x10,
  kRebaseSetSegmentAndOffset = 0x20,
  kRebaseAddAddress = 0x30,
  kRebaseAddAddressScaled = 0x40,
  kRebaseTimes = 0x50,
  kRebaseUlebTimes = 0x60,
  kRebaseAndAddAddress = 0x70,
  kRebaseUlebTimesSkipping = 0x80,
};

enum BindOpcode : std::uint8_t {
  kBindDone = 0x00,
  kBindSetOrdinal = 0x10,
  kBindSetOrdinalUleb = 0x20,
  kBindSetOrdinalSpecial = 0x30,
  kBindSetSymbol = 0x40,
  kBindSetType = 0x50,
  kBindSetAddend = 0x60,
  kBindSetSegmentAndOffset = 0x70,
  kBindAddAddress = 0x80,
  kBindDo = 0x90,
  kBindDoAndAddAddress = 0xA0,
  kBindDoAndAddAddressScaled = 0xB0,
  kBindUlebTimesSkipping = 0xC0,
};

enum : std::uint8_t { kSymbolWeakImport = 0x1, kSymbolStrongDefinition = 0x8 };

void requirePointerType(int type) {
  if (type != kPointerType) throw LoadError(fmt::format("fixup type {} is not supported", type));
}

// The current place of a stream. Offsets wrap at 64 bits, which is how a stream steps back.
class Cursor {
 public:
  void set(std::size_t segment, std::uint64_t offset) { place_ = {segment, offset}, set_ = true; }
  void add(std::uint64_t distance) { place_.offset += distance; }

  const FixupPlace& place() const {
    if (!set_) throw LoadError("a fixup comes before its segment");
    return place_;
  }

 private:
  FixupPlace place_;
  bool set_ = false;
};

class RebaseStream {
 public:
  RebaseStream(Bytes opcodes, std::size_t limit)
      : reader_(opcodes, "the rebase stream"), limit_(limit) {}

  std::vector<FixupPlace> run() {
    while (!reader_.atEnd() && step(reader_.read<std::uint8_t>())) {
    }
    return std::move(places_);
  }

 private:
  // Returns false at the end of the stream.
  bool step(std::uint8_t byte) {
    const std::uint8_t immediate = byte & kImmediateMask;
    switch (byte & kOpcodeMask) {
      case kRebaseDone:
        return false;
      case kRebaseSetType:
        requirePointerType(immediate);
        break;
      case kRebaseSetSegmentAndOffset:
        cursor_.set(immediate, reader_.readUleb());
        break;
      case kRebaseAddAddress:
        cursor_.add(reader_.readUleb());
        break;
      case kRebaseAddAddressScaled:
        cursor_.add(immediate * kPointerSize);
        break;
      case kRebaseTimes:
        repeat(immediate, 0);
        break;
      case kRebaseUlebTimes:
        repeat(reader_.readUleb(), 0);
        break;
      case kRebaseAndAddAddress:
        repeat(1, reader_.readUleb());
        break;
      case kRebaseUlebTimesSkipping:
        repeatSkipping();
        break;
      default:
        throw LoadError(fmt::format("rebase opcode {:#04x} is not supported", byte));
    }
    return true;
  }

  void repeatSkipping() {
    const std::uint64_t count = reader_.readUleb();
    repeat(count, reader_.readUleb());
  }

  void repeat(std::uint64_t count, std::uint64_t skip) {
    if (count > limit_ - places_.size()) throw LoadError("more rebases than the image has words");
    for (; count > 0; --count) {
      places_.push_back(cursor_.place());
      cursor_.add(kPointerSize + skip);
    }
  }

  ByteReader reader_;
  std::size_t limit_;
  Cursor cursor_;
  std::vector<FixupPlace> places_;
};

class BindStream {
 public:
  BindStream(Bytes opcodes, BindKind kind, std::size_t limit)
      : reader_(opcodes, "the bind stream"), kind_(kind), limit_(limit) {
    if (kind == BindKind::kWeak) current_.ordinal = kOrdinalWeakLookup;
  }

  std::vector<Bind> run() {
    while (!reader_.atEnd() && step(reader_.read<std::uint8_t>())) {
    }
    return std::move(binds_);
  }

 private:
  bool step(std::uint8_t byte) {
    const std::uint8_t immediate = byte & kImmediateMask;
    switch (byte & kOpcodeMask) {
      // In a lazy stream this opcode ends one symbol, which can be bound alone; others may follow.
      case kBindDone:
        return kind_ == BindKind::kLazy;
      case kBindSetOrdinal:
        current_.ordinal = immediate;
        break;
      case kBindSetOrdinalUleb:
        setOrdinal(reader_.readUleb());
        break;
      case kBindSetOrdinalSpecial:
        setSpecialOrdinal(immediate);
        break;
      case kBindSetSymbol:
        setSymbol(immediate);
        break;
      case kBindSetType:
        requirePointerType(immediate);
        break;
      case kBindSetAddend:
        current_.addend = reader_.readSleb();
        break;
      case kBindSetSegmentAndOffset:
        cursor_.set(immediate, reader_.readUleb());
        break;
      case kBindAddAddress:
        cursor_.add(reader_.readUleb());
        break;
      case kBindDo:
        repeat(1, 0);
        break;
      case kBindDoAndAddAddress:
        repeat(1, reader_.readUleb());
        break;
      case kBindDoAndAddAddressScaled:
        repeat(1, immediate * kPointerSize);
        break;
      case kBindUlebTimesSkipping:
        repeatSkipping();
        break;
      default:
        throw LoadError(fmt::format("bind opcode {:#04x} is not supported", byte));
    }
    return true;
  }

  void setOrdinal(std::uint64_t ordinal) {
    if (ordinal > INT32_MAX)
      throw LoadError(fmt::format("library ordinal {} is too large", ordinal));
    current_.ordinal = static_cast<std::int64_t>(ordinal);
  }

  // The four bits are sign-extended.
  void setSpecialOrdinal(std::uint8_t immediate) {
    current_.ordinal = immediate == 0 ? 0 : static_cast<std::int8_t>(kOpcodeMask | immediate);
  }

  void setSymbol(std::uint8_t flags) {
    current_.symbol = std::string(reader_.readText());
    current_.weakImport = (flags & kSymbolWeakImport) != 0;
    current_.strongDefinition = (flags & kSymbolStrongDefinition) != 0;
    if (current_.strongDefinition) add();
  }

  void repeatSkipping() {
    const std::uint64_t count = reader_.readUleb();
    repeat(count, reader_.readUleb());
  }

  void repeat(std::uint64_t count, std::uint64_t skip) {
    if (current_.symbol.empty()) throw LoadError("a bind comes before its symbol");
    for (; count > 0; --count) {
      current_.place = cursor_.place();
      current_.strongDefinition = false;
      add();
      cursor_.add(kPointerSize + skip);
    }
  }

  void add() {
    if (binds_.size() == limit_) throw LoadError("more binds than the image has words");
    binds_.push_back(current_);
  }

  ByteReader reader_;
  BindKind kind_;
  std::size_t limit_;
  Cursor cursor_;
  Bind current_;
  std::vector<Bind> binds_;
};

}  // namespace

std::vector<FixupPlace> readRebases(Bytes opcodes, std::size_t limit) {
  return RebaseStream(opcodes, limit).run();
}

std::vector<Bind> readBinds(Bytes opcodes, BindKind kind, std::size_t limit) {
  return BindStream(opcodes, kind, limit).run();
}

}  // namespace simulator
