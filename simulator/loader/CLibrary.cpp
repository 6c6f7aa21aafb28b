#include "simulator/loader/CLibrary.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "simulator/loader/ByteReader.h"
#include "simulator/loader/OwnProcessor.h"

namespace simulator {

namespace {

struct OwnSymbol {
  std::string_view name;
  void* address;
};

// Functions with the same name, arguments and results on both systems.
constexpr std::string_view kSystemSymbols[] = {
    "___cxa_atexit", "__Unwind_Resume", "_abort",     "_acos",    "_asin",
    "_atan",         "_atan2",          "_calloc",    "_cos",     "_exp",
    "_fclose",       "_feof",           "_ferror",    "_fflush",  "_fgetc",
    "_fgets",        "_floor",          "_fmod",      "_fopen",   "_fprintf",
    "_fputc",        "_fputs",          "_fread",     "_free",    "_fseek",
    "_ftell",        "_fwrite",         "_log",       "_malloc",  "_memchr",
    "_memcmp",       "_memcpy",         "_memmove",   "_memset",  "_pow",
    "_printf",       "_putchar",        "_puts",      "_realloc", "_sin",
    "_snprintf",     "_sqrt",           "_sscanf",    "_strcat",  "_strchr",
    "_strcmp",       "_strcpy",         "_strdup",    "_strlen",  "_strncat",
    "_strncmp",      "_strncpy",        "_strnlen",   "_strrchr", "_strstr",
    "_tan",          "_vfprintf",       "_vsnprintf",
};

// Parts of the mangled names of classes whose objects hold records of the system's own: locks and
// threads, locales and character tables, conversion states and files. Those differ between the two
// systems. Also what counts the references to an exception, which each C++ ABI library does in its
// own way.
constexpr std::string_view kSystemDependent[] = {
    "mutex",
    "condition_variable",
    "thread",
    "promise",
    "future",
    "assoc",
    "synchronized_pool",
    "call_once",
    "atomic_wait",
    "atomic_notify",
    "locale",
    "ctype",
    "codecvt",
    "collate",
    "messages",
    "moneypunct",
    "money_get",
    "money_put",
    "numpunct",
    "num_get",
    "num_put",
    "time_get",
    "time_put",
    "ios_base",
    "basic_ios",
    "stream",
    "filebuf",
    "stringbuf",
    "4coutE",
    "4cerrE",
    "4clogE",
    "3cinE",
    "5wcoutE",
    "5wcerrE",
    "5wclogE",
    "4wcinE",
    "filesystem",
    "exception_ptr",
    "current_excep",
    "nested_exception",
    "rethrow_exc",
    "_primary_exception",
    "exception_refcount",
};

// On arm64, the Mac's strings have a layout of their own. Parts of the mangled names of functions
// that take, return or keep strings.
constexpr std::string_view kOfStrings[] = {
    "basic_string",     "to_string",       "to_wstring",   "error_category",
    "generic_category", "system_category", "system_error",
};

// Helpers that the target's compiler calls and this system's libraries lack.

void zeroBytes(void* block, std::size_t size) { std::memset(block, 0, size); }

void setPattern16(void* block, const void* pattern, std::size_t size) {
  auto* out = static_cast<unsigned char*>(block);
  for (; size >= 16; size -= 16, out += 16) std::memcpy(out, pattern, 16);
  std::memcpy(out, pattern, size);
}

SineAndCosine sineAndCosine(double angle) { return {std::sin(angle), std::cos(angle)}; }

[[noreturn]] void stackWasSmashed() {
  std::fputs("stack buffer overrun in the plug-in\n", stderr);
  std::abort();
}

// Never called: every lazy symbol is bound at load time.
[[noreturn]] void bindLazily() {
  std::fputs("the plug-in called the lazy binder\n", stderr);
  std::abort();
}

std::uintptr_t stackGuard = 0x00AFF0DE5A5A0DFF;

template <class Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
}

template <std::size_t size>
void* findOwn(const OwnSymbol (&symbols)[size], std::string_view name) {
  const auto* const found = std::find_if(std::begin(symbols), std::end(symbols),
                                         [&](const OwnSymbol& own) { return own.name == name; });
  return found == std::end(symbols) ? nullptr : found->address;
}

template <std::size_t size>
void* findListed(const std::string_view (&symbols)[size], std::string_view name) {
  if (std::find(std::begin(symbols), std::end(symbols), name) == std::end(symbols)) return nullptr;
  return dlsym(RTLD_DEFAULT, std::string(name.substr(1)).c_str());
}

// The distribution's libc++. RTLD_LOCAL hides its symbols from the rest of the process, while its
// own references to the C++ ABI go to the process's libstdc++: exceptions, type information and
// memory are then the same for a plug-in, this library and the simulator. RTLD_DEEPBIND or another
// namespace would give it an ABI library and a heap of its own.
void* libCxx() {
  static void* const library = dlopen("libc++.so.1", RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    throw LoadError("libc++.so.1, which stands for the Mac's C++ library, is not installed");
  }
  return library;
}

// A symbol that libc++ or its ABI library defines; null if neither does.
void* exportedByLibCxx(const char* name) {
  void* const found = dlsym(libCxx(), name);
  Dl_info info{};
  if (found == nullptr || dladdr(found, &info) == 0) return nullptr;
  const std::string_view file = info.dli_fname;
  return file.substr(file.rfind('/') + 1).starts_with("libc++") ? found : nullptr;
}

void requireSystemIndependent(std::string_view symbol) {
  for (const std::string_view part : kSystemDependent) {
    if (symbol.find(part) == std::string_view::npos) continue;
    throw LoadError(
        fmt::format("import {} is not supported: the C++ library's threads, locales, "
                    "streams, files and stored exceptions differ between the systems",
                    symbol));
  }
}

void requireSameStrings(std::string_view symbol) {
  if (ownProcessor() != mach::kArm64) return;
  for (const std::string_view part : kOfStrings) {
    if (symbol.find(part) == std::string_view::npos) continue;
    throw LoadError(
        fmt::format("import {} is not supported: the C++ library's strings have another layout on "
                    "the Mac's arm64",
                    symbol));
  }
}

}  // namespace

void* findInLibSystem(std::string_view symbol) {
  static const OwnSymbol kOwn[] = {
      {"___bzero", address(&zeroBytes)},
      {"_bzero", address(&zeroBytes)},
      {"_memset_pattern16", address(&setPattern16)},
      {"___sincos_stret", address(&sineAndCosine)},
      {"___stack_chk_guard", &stackGuard},
      {"___stack_chk_fail", address(&stackWasSmashed)},
      {"___stdinp", &stdin},
      {"___stdoutp", &stdout},
      {"___stderrp", &stderr},
      {"dyld_stub_binder", address(&bindLazily)},
  };
  void* const own = findOwn(kOwn, symbol);
  return own != nullptr ? own : findListed(kSystemSymbols, symbol);
}

void* findInLibCxx(std::string_view symbol) {
  if (!symbol.starts_with('_')) return nullptr;
  const std::string name(symbol.substr(1));
  void* const exported = exportedByLibCxx(name.c_str());
  if (exported == nullptr) return nullptr;
  requireSystemIndependent(symbol);
  requireSameStrings(symbol);
  void* const shared = dlsym(RTLD_DEFAULT, name.c_str());
  return shared != nullptr ? shared : exported;
}

}  // namespace simulator
