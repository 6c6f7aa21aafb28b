// Fills an image's import words with the addresses that its libraries have for them.
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
  /// Refuses a library that is missing, unless its load command is a weak one. Everything is kept
  /// by reference for the binder's life. `name` is the file's, for errors.
  ImportBinder(const MachFile& file, ImageMemory& memory,
               const std::map<std::string, std::uint64_t>& exports,
               const SystemLibraries& libraries, const std::string& name);

  /// Binds each word to the library that it names. A symbol that is missing is refused, except
  /// where it is a weak import or its library is absent: then it is null.
  void bindAll(const std::vector<Bind>& binds);

  /// Binds words that take the process's one definition of a symbol: the first library's that has
  /// it, else the image's own. Where there is neither, the word stays as it is.
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
