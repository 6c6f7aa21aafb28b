#include "simulator/loader/MachImage.h"

#include <fmt/format.h>

#include <cstring>
#include <utility>
#include <vector>

#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/ExportTrie.h"
#include "simulator/loader/ImportBinder.h"

// Published by the C++ ABI; runs the exit functions that were registered with this handle.
extern "C" void __cxa_finalize(void* handle);

namespace simulator {

namespace {

// The platform's loader passes the process's arguments and environment; this one passes empty
// lists.
using Initialiser = void (*)(int, const char* const*, const char* const*, const char* const*);
using Terminator = void (*)();

std::vector<std::uint64_t> pointers(const ImageMemory& memory, const Section& section) {
  std::vector<std::uint64_t> values(section.size / sizeof(std::uint64_t));
  const Bytes bytes = memory.at(section.address, section.size, section.name);
  if (!values.empty()) std::memcpy(values.data(), bytes.data(), values.size() * 8);
  return values;
}

std::vector<std::uint64_t> pointersOfType(const MachFile& file, const ImageMemory& memory,
                                          std::uint32_t type) {
  std::vector<std::uint64_t> all;
  for (const Section& section : file.sections()) {
    if (section.type != type) continue;
    const std::vector<std::uint64_t> some = pointers(memory, section);
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

// The functions that sections of offsets from the image's start name.
std::vector<std::uint64_t> functionsOfOffsets(const MachFile& file, const ImageMemory& memory) {
  std::vector<std::uint64_t> all;
  for (const Section& section : file.sections()) {
    if (section.type != mach::kInitFunctionOffsets) continue;
    const Bytes bytes = memory.at(section.address, section.size, section.name);
    for (ByteReader reader(bytes, section.name); !reader.atEnd();) {
      all.push_back(reinterpret_cast<std::uintptr_t>(memory.base()) + reader.read<std::uint32_t>());
    }
  }
  return all;
}

// In the order in which they run.
std::vector<std::uint64_t> initialisers(const MachFile& file, const ImageMemory& memory) {
  std::vector<std::uint64_t> all = pointersOfType(file, memory, mach::kModInitPointers);
  const std::vector<std::uint64_t> offsets = functionsOfOffsets(file, memory);
  all.insert(all.end(), offsets.begin(), offsets.end());
  return all;
}

std::vector<std::uint64_t> terminators(const MachFile& file, const ImageMemory& memory) {
  return pointersOfType(file, memory, mach::kModTermPointers);
}

}  // namespace

std::unique_ptr<MachImage> MachImage::prepare(MachFile file, const SystemLibraries& libraries,
                                              std::string name) {
  if (!file.unsupported().empty()) throw LoadError(file.unsupported());
  std::unique_ptr<MachImage> image(
      new MachImage(std::make_unique<MachFile>(std::move(file)), std::move(name)));
  image->applyFixups(libraries);
  image->checkInitialisers();
  image->frames_.emplace(makeEhFrame(*image->file_, image->memory_));
  image->memory_.protect();
  return image;
}

std::unique_ptr<MachImage> MachImage::load(const std::filesystem::path& path,
                                           const SystemLibraries& libraries) {
  std::unique_ptr<MachImage> image = prepare(MachFile::open(path), libraries, path.string());
  image->initialise();
  return image;
}

MachImage::MachImage(std::unique_ptr<MachFile> file, std::string name)
    : file_(std::move(file)),
      name_(std::move(name)),
      memory_(*file_),
      exports_(readExportTrie(file_->exportTrie())) {
  for (const auto& [symbol, offset] : exports_) memory_.at(offset, 1, symbol);
}

MachImage::~MachImage() {
  if (!initialised_) return;
  // The image registers its exit functions under the address of its header, its first byte.
  __cxa_finalize(memory_.base());
  const std::vector<std::uint64_t> last = terminators(*file_, memory_);
  for (auto i = last.rbegin(); i != last.rend(); ++i) reinterpret_cast<Terminator>(*i)();
}

void* MachImage::symbol(std::string_view name) const {
  const auto found = exports_.find("_" + std::string(name));
  return found == exports_.end() ? nullptr : memory_.base() + found->second;
}

void MachImage::initialise() {
  if (std::exchange(initialised_, true)) return;
  static constexpr const char* kNothing[] = {nullptr};
  for (const std::uint64_t function : initialisers(*file_, memory_)) {
    reinterpret_cast<Initialiser>(function)(0, kNothing, kNothing, kNothing);
  }
}

void MachImage::applyFixups(const SystemLibraries& libraries) {
  const std::size_t limit = fixupLimit();
  for (const FixupPlace& place : readRebases(file_->rebaseOpcodes(), limit)) memory_.rebase(place);
  ImportBinder binder(*file_, memory_, exports_, libraries, name_);
  binder.bindAll(readBinds(file_->bindOpcodes(), BindKind::kRegular, limit));
  binder.bindAll(readBinds(file_->lazyBindOpcodes(), BindKind::kLazy, limit));
  binder.bindWeak(readBinds(file_->weakBindOpcodes(), BindKind::kWeak, limit));
}

// A LoadError if an initialiser or terminator lies outside the image's code.
void MachImage::checkInitialisers() const {
  for (const auto& functions : {initialisers(*file_, memory_), terminators(*file_, memory_)}) {
    for (const std::uint64_t function : functions) {
      const auto offset = function - reinterpret_cast<std::uintptr_t>(memory_.base());
      if (!memory_.isExecutable(offset)) {
        throw LoadError(fmt::format("{}: an initialiser lies outside the code", name_));
      }
    }
  }
}

// The number of words in the file: each can be fixed up once, and zero-filled memory has no fixups.
std::size_t MachImage::fixupLimit() const {
  std::size_t bytes = 0;
  for (const Segment& segment : file_->segments()) bytes += segment.fileSize;
  return bytes / sizeof(std::uint64_t);
}

}  // namespace simulator
