#include "simulator/loader/UniversalFile.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/loader/FileKind.h"

namespace simulator {

namespace {

constexpr std::string_view kTable = "the universal file's table";
// Java class files begin with the same magic number, followed by a version of 45 or more.
constexpr std::uint32_t kMostSlices = 44;
constexpr std::uint32_t kLargestAlignment = 15;

struct Slice {
  mach::Processor processor;
  std::uint64_t offset;
  std::uint64_t size;
  std::uint32_t alignment;

  std::string name() const { return processorName(processor); }
};

template <class Record>
Slice readSlice(ByteReader& reader) {
  const auto record = reader.read<Record>();
  return {
      mach::withoutCapabilities({mach::swapped(record.cpuType), mach::swapped(record.cpuSubtype)}),
      mach::swapped(record.offset), mach::swapped(record.size), mach::swapped(record.alignment)};
}

class UniversalFile {
 public:
  explicit UniversalFile(Bytes file) : file_(file) {
    readTable();
    for (const Slice& slice : slices_) checkPlace(slice);
    for (auto slice = slices_.begin(); slice != slices_.end(); ++slice) {
      for (auto other = slices_.begin(); other != slice; ++other) checkPair(*other, *slice);
    }
  }

  Bytes sliceFor(mach::Processor wanted) const {
    const Slice& slice = find(wanted);
    const std::uint64_t page = mach::pageSize(slice.processor);
    if (slice.offset % page != 0) {
      throw LoadError(
          fmt::format("the slice for {} does not begin at a page of {} bytes (at {:#x})",
                      slice.name(), page, slice.offset));
    }
    return file_.subspan(slice.offset, slice.size);
  }

  std::vector<mach::Processor> processors() const {
    std::vector<mach::Processor> all;
    for (const Slice& slice : slices_) all.push_back(slice.processor);
    return all;
  }

 private:
  void readTable() {
    ByteReader reader(file_, kTable);
    const auto header = reader.read<mach::UniversalHeader>();
    const std::uint32_t count = mach::swapped(header.sliceCount);
    if (count == 0 || count > kMostSlices) {
      throw LoadError(
          fmt::format("{} has {} rows; 1 to {} are allowed", kTable, count, kMostSlices));
    }
    const bool is64 = mach::swapped(header.magic) == mach::kUniversalMagic64;
    for (std::uint32_t i = 0; i < count; ++i) {
      slices_.push_back(is64 ? readSlice<mach::SliceRecord64>(reader)
                             : readSlice<mach::SliceRecord>(reader));
    }
    tableEnd_ = reader.position();
  }

  void checkPlace(const Slice& slice) const {
    simulator::slice(file_, slice.offset, slice.size, "the slice for " + slice.name());
    if (slice.alignment > kLargestAlignment) {
      throw LoadError(
          fmt::format("the slice for {} asks for an alignment of 2^{}; at most 2^{} is "
                      "allowed",
                      slice.name(), slice.alignment, kLargestAlignment));
    }
    if (slice.offset % (std::uint64_t{1} << slice.alignment) != 0) {
      throw LoadError(fmt::format("the slice for {} is not aligned to 2^{} bytes (at {:#x})",
                                  slice.name(), slice.alignment, slice.offset));
    }
    if (slice.offset < tableEnd_) {
      throw LoadError(fmt::format("the slice for {} overlaps the table", slice.name()));
    }
  }

  static void checkPair(const Slice& one, const Slice& other) {
    if (one.processor == other.processor) {
      throw LoadError(fmt::format("the universal file has two slices for {}", one.name()));
    }
    if (one.offset < other.offset + other.size && other.offset < one.offset + one.size) {
      throw LoadError(fmt::format("the slices for {} and {} overlap", one.name(), other.name()));
    }
  }

  const Slice& find(mach::Processor wanted) const {
    const Slice* found = nullptr;
    for (const Slice& slice : slices_) {
      if (slice.processor == wanted) return slice;
      if (slice.processor.type == wanted.type && found == nullptr) found = &slice;
    }
    if (found != nullptr) return *found;
    std::vector<std::string> names;
    for (const Slice& slice : slices_) names.push_back(slice.name());
    throw LoadError(fmt::format("the universal file is for {}; a slice for {} is needed",
                                fmt::join(names, ", "), processorName(wanted)));
  }

  Bytes file_;
  std::vector<Slice> slices_;
  std::size_t tableEnd_ = 0;
};

}  // namespace

Bytes sliceFor(Bytes file, mach::Processor wanted) { return UniversalFile(file).sliceFor(wanted); }

std::vector<mach::Processor> processorsIn(Bytes file) { return UniversalFile(file).processors(); }

}  // namespace simulator
