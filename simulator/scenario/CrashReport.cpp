#include "simulator/scenario/CrashReport.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <elf.h>
#include <execinfo.h>
#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

namespace simulator {

namespace {

constexpr std::array kFaults = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGTRAP, SIGSYS};

CrashRecord* theRecord = nullptr;
std::array<char, 4096> theModule{};

/// The offset of an address in the watched module; 0 if it lies elsewhere.
std::uint64_t offsetInModule(void* address) {
  Dl_info info = {};
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return 0;
  if (std::strcmp(info.dli_fname, theModule.data()) != 0) return 0;
  return static_cast<std::uint64_t>(static_cast<char*>(address) -
                                    static_cast<char*>(info.dli_fbase));
}

/// Return addresses lie after the call, which may be the last instruction of its function.
std::uint64_t innermostOffset() {
  std::array<void*, 64> frames{};
  const int count = backtrace(frames.data(), static_cast<int>(frames.size()));
  for (int i = 0; i < count; ++i) {
    const std::uint64_t offset = offsetInModule(frames[static_cast<std::size_t>(i)]);
    if (offset != 0) return offset - 1;
  }
  return 0;
}

/// Should finding the place crash as well, the signal is already recorded and the process ends.
void recordAndDie(int signal) {
  std::signal(signal, SIG_DFL);
  if (theRecord->signal == 0) {
    theRecord->signal = signal;
    theRecord->offset = innermostOffset();
  }
  // Delivered when the handler returns.
  raise(signal);
}

template <class T>
bool readAt(const std::string& bytes, std::uint64_t offset, T& value) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof value) return false;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return true;
}

/// Reads the name of a symbol; empty if it lies outside the file.
std::string nameAt(const std::string& bytes, std::uint64_t offset) {
  if (offset >= bytes.size()) return {};
  const std::size_t end = bytes.find('\0', offset);
  return end == std::string::npos ? "" : bytes.substr(offset, end - offset);
}

std::string plainName(const std::string& symbol) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status), std::free);
  return name ? name.get() : symbol;
}

/// The name of the function in one symbol table that covers the address.
std::string functionIn(const std::string& bytes, const Elf64_Shdr& table, const Elf64_Shdr& names,
                       std::uint64_t address) {
  for (std::uint64_t at = 0; at + sizeof(Elf64_Sym) <= table.sh_size; at += sizeof(Elf64_Sym)) {
    Elf64_Sym symbol = {};
    if (!readAt(bytes, table.sh_offset + at, symbol)) return {};
    const bool covers = ELF64_ST_TYPE(symbol.st_info) == STT_FUNC && address >= symbol.st_value &&
                        address - symbol.st_value < symbol.st_size;
    if (covers) return nameAt(bytes, names.sh_offset + symbol.st_name);
  }
  return {};
}

}  // namespace

void recordCrashes(CrashRecord& record) {
  theRecord = &record;
  // The first call loads a library, which must not happen in the handler.
  void* frame = nullptr;
  backtrace(&frame, 1);
  // The handler also runs if the stack has overflowed.
  static std::array<char, 65536> stack;
  const stack_t alternative = {.ss_sp = stack.data(), .ss_flags = 0, .ss_size = stack.size()};
  sigaltstack(&alternative, nullptr);
  struct sigaction action = {};
  action.sa_handler = recordAndDie;
  action.sa_flags = SA_ONSTACK;
  for (const int signal : kFaults) sigaction(signal, &action, nullptr);
}

void watchModule(const std::string& file) {
  if (file.size() < theModule.size()) std::strcpy(theModule.data(), file.c_str());
}

std::string functionAt(const std::string& module, std::uint64_t offset) {
  std::ifstream stream(module, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  Elf64_Ehdr header = {};
  const bool isElf = readAt(bytes, 0, header) &&
                     std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
                     header.e_ident[EI_CLASS] == ELFCLASS64;
  if (!isElf) return {};
  for (unsigned i = 0; i < header.e_shnum; ++i) {
    Elf64_Shdr table = {};
    Elf64_Shdr names = {};
    const auto section = [&](unsigned number, Elf64_Shdr& to) {
      return readAt(bytes, header.e_shoff + std::uint64_t{number} * sizeof to, to);
    };
    if (!section(i, table)) return {};
    if (table.sh_type != SHT_SYMTAB && table.sh_type != SHT_DYNSYM) continue;
    if (!section(table.sh_link, names)) continue;
    const std::string name = functionIn(bytes, table, names, offset);
    if (!name.empty()) return plainName(name);
  }
  return {};
}

std::string signalName(int signal) {
  const char* const name = sigabbrev_np(signal);
  if (name == nullptr) return fmt::format("signal {}", signal);
  return fmt::format("SIG{} ({})", name, sigdescr_np(signal));
}

}  // namespace simulator
