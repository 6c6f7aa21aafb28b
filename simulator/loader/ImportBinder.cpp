#include "simulator/loader/ImportBinder.h"

#include <fmt/format.h>

namespace simulator {

ImportBinder::ImportBinder(const MachFile& file, ImageMemory& memory,
                           const std::map<std::string, std::uint64_t>& exports,
                           const SystemLibraries& libraries, const std::string& name)
    : file_(file), memory_(memory), exports_(exports), libraries_(libraries), name_(name) {
  for (const Library& library : file.libraries()) {
    if (library.weak || libraries.has(library.name)) continue;
    throw LoadError(
        fmt::format("Library not loaded: {}, referenced from: {}, reason: image not found",
                    library.name, name));
  }
}

void ImportBinder::bindAll(const std::vector<Bind>& binds) {
  for (const Bind& bind : binds) {
    const std::uint64_t address = resolve(bind);
    // A missing weak import is null even if it has an addend.
    memory_.writePointer(bind.place,
                         address == 0 ? 0 : address + static_cast<std::uint64_t>(bind.addend));
  }
}

void ImportBinder::bindWeak(const std::vector<Bind>& binds) {
  for (const Bind& bind : binds) {
    if (bind.strongDefinition) continue;
    std::uint64_t address = lookUpEverywhere(bind.symbol);
    if (address == 0) address = lookUpInImage(bind.symbol);
    if (address == 0) continue;
    memory_.writePointer(bind.place, address + static_cast<std::uint64_t>(bind.addend));
  }
}

std::uint64_t ImportBinder::resolve(const Bind& bind) {
  const auto [known, added] = resolved_.try_emplace({bind.ordinal, bind.symbol}, 0);
  if (added) known->second = lookUp(bind);
  return known->second;
}

std::uint64_t ImportBinder::lookUp(const Bind& bind) const {
  switch (bind.ordinal) {
    case kOrdinalSelf:
    case kOrdinalMainExecutable: {
      const std::uint64_t own = bind.ordinal == kOrdinalSelf ? lookUpInImage(bind.symbol) : 0;
      if (own == 0 && !bind.weakImport) refuse(bind, "the file that asks for it");
      return own;
    }
    case kOrdinalFlatLookup:
    case kOrdinalWeakLookup: {
      const std::uint64_t found = lookUpEverywhere(bind.symbol);
      if (found == 0 && !bind.weakImport) refuse(bind, "flat namespace");
      return found;
    }
    default:
      return lookUpInLibrary(bind);
  }
}

std::uint64_t ImportBinder::lookUpInLibrary(const Bind& bind) const {
  const auto index = static_cast<std::uint64_t>(bind.ordinal - 1);
  if (index >= file_.libraries().size()) {
    throw LoadError(fmt::format("{}: {} is bound to library {}, which has no load command", name_,
                                bind.symbol, bind.ordinal));
  }
  const Library& library = file_.libraries()[index];
  if (!libraries_.has(library.name)) return 0;
  const auto address = reinterpret_cast<std::uintptr_t>(libraries_.find(library.name, bind.symbol));
  if (address == 0 && !bind.weakImport) refuse(bind, library.name);
  return address;
}

std::uint64_t ImportBinder::lookUpEverywhere(const std::string& symbol) const {
  for (const Library& library : file_.libraries()) {
    if (!libraries_.has(library.name)) continue;
    if (void* const found = libraries_.find(library.name, symbol)) {
      return reinterpret_cast<std::uintptr_t>(found);
    }
  }
  return 0;
}

std::uint64_t ImportBinder::lookUpInImage(const std::string& symbol) const {
  const auto found = exports_.find(symbol);
  if (found == exports_.end()) return 0;
  return reinterpret_cast<std::uintptr_t>(memory_.base()) + found->second;
}

void ImportBinder::refuse(const Bind& bind, const std::string& where) const {
  throw LoadError(fmt::format("Symbol not found: {}, referenced from: {}, expected in: {}",
                              bind.symbol, name_, where));
}

}  // namespace simulator
