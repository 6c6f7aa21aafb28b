// Builds universal files for tests.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "simulator/loader/MachFormat.h"

namespace simulator {

/// One slice of a universal file to build. Places that are not given are the next page.
struct SliceToBuild {
  mach::Processor processor;
  std::vector<std::byte> contents;
  std::uint64_t offset = 0;  ///< 0: after the slice before it, at a page
  std::uint64_t size = 0;    ///< 0: that of the contents
  std::uint32_t alignment = 12;
};

enum class TableForm { k32, k64 };

/// A universal file with these slices. Contents whose place is given are not written.
inline std::vector<std::byte> universalFile(const std::vector<SliceToBuild>& slices,
                                            TableForm form = TableForm::k32) {
  std::vector<std::byte> file;
  const auto put = [&](std::uint64_t value, unsigned size) {
    while (size-- > 0) file.push_back(static_cast<std::byte>(value >> (8 * size)));
  };
  const unsigned width = form == TableForm::k64 ? 8 : 4;
  put(form == TableForm::k64 ? mach::kUniversalMagic64 : mach::kUniversalMagic, 4);
  put(slices.size(), 4);
  std::uint64_t end = 1;
  std::vector<std::uint64_t> places;
  for (const SliceToBuild& slice : slices) {
    const std::uint64_t page = mach::pageSize(slice.processor);
    if (slice.offset == 0) end = (end + page - 1) / page * page;
    places.push_back(slice.offset != 0 ? 0 : end);
    put(static_cast<std::uint32_t>(slice.processor.type), 4);
    put(static_cast<std::uint32_t>(slice.processor.subtype), 4);
    put(slice.offset != 0 ? slice.offset : end, width);
    put(slice.size != 0 ? slice.size : slice.contents.size(), width);
    put(slice.alignment, 4);
    if (form == TableForm::k64) put(0, 4);
    if (slice.offset == 0) end += slice.contents.size();
  }
  for (std::size_t i = 0; i < slices.size(); ++i) {
    if (places[i] == 0) continue;
    file.resize(places[i]);
    file.insert(file.end(), slices[i].contents.begin(), slices[i].contents.end());
  }
  return file;
}

}  // namespace simulator
