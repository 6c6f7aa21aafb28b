// Fills an image's import words with the addresses of the symbols that they name.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "simulator/loader/DyldOpcodes.h"
#include "simulator/loader/ImageMemory.h"
#include "simulator/loader/MachFile.h"
#include "simulator/loader/SystemLibraries.h"

namespace simulator {

class ImportBinder {
 public:
  /// A LoadError if a library is missing and its load command is not weak. `name` is the file's
  /// name, for errors. REQUIRES: all arguments outlive the binder.
  ImportBinder(const MachFile& file, ImageMemory& memory,
               const std::map<std::string, std::uint64_t>& exports,
               const SystemLibraries& libraries, const std::string& name);

  /// Binds each word to its symbol in the library that it names. If the symbol is missing, the word
  /// becomes null if it is a weak import or its library is absent; otherwise a LoadError.
  void bindAll(const std::vector<Bind>& binds);

  /// Binds each word to the process-wide definition of its symbol: that of the first library that
  /// has one, else the image's own. If there is neither, the word stays unchanged.
  void bindWeak(const std::vector<Bind>& binds);

 private:
  std::uint64_t resolve(const Bind& bind);
  std::uint64_t lookUp(const Bind& bind) const;
  std::uint64_t lookUpInLibrary(const Bind& bind) const;
  std::uint64_t lookUpEverywhere(const std::string& symbol) const;
  std::uint64_t lookUpInImage(const std::string& symbol) const;
  [[noreturn]] void refuse(const Bind& bind, const std::string& where) const;

  const MachFile& file_;
  ImageMemory& memory_;
  const std::map<std::string, std::uint64_t>& exports_;
  const SystemLibraries& libraries_;
  const std::string& name_;
  std::map<std::pair<std::int64_t, std::string>, std::uint64_t> resolved_;
};

}  // namespace simulator
