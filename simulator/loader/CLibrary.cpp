#include "simulator/loader/CLibrary.h"

#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

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

// The C++ ABI that both run times share, and the few library classes whose members are all out of
// line: the plug-in's code does not depend on their layout.
constexpr std::string_view kCxxSymbols[] = {
    "___cxa_allocate_exception",
    "___cxa_begin_catch",
    "___cxa_current_exception_type",
    "___cxa_end_catch",
    "___cxa_free_exception",
    "___cxa_get_exception_ptr",
    "___cxa_guard_abort",
    "___cxa_guard_acquire",
    "___cxa_guard_release",
    "___cxa_pure_virtual",
    "___cxa_rethrow",
    "___cxa_throw",
    "___dynamic_cast",
    "___gxx_personality_v0",
    "__ZNSt11logic_errorC2EPKc",
    "__ZNSt12length_errorD1Ev",
    "__ZNSt12out_of_rangeD1Ev",
    "__ZNSt20bad_array_new_lengthD1Ev",
    "__ZNSt9bad_allocD1Ev",
    "__ZNSt9exceptionD2Ev",
    "__ZNKSt9exception4whatEv",
    "__ZSt9terminatev",
    "__ZTISt12length_error",
    "__ZTISt12out_of_range",
    "__ZTISt20bad_array_new_length",
    "__ZTISt9bad_alloc",
    "__ZTISt9exception",
    "__ZTIi",
    "__ZTIj",
    "__ZTISt11logic_error",
    "__ZTVN10__cxxabiv117__class_type_infoE",
    "__ZTVN10__cxxabiv120__si_class_type_infoE",
    "__ZTVN10__cxxabiv121__vmi_class_type_infoE",
    "__ZTVSt12length_error",
    "__ZTVSt12out_of_range",
    "__ZTVSt20bad_array_new_length",
    "__ZTVSt9bad_alloc",
    "__ZdaPv",
    "__ZdaPvm",
    "__ZdlPv",
    "__ZdlPvm",
    "__Znam",
    "__ZnamRKSt9nothrow_t",
    "__Znwm",
    "__ZnwmRKSt9nothrow_t",
    "__ZSt7nothrow",
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

// libc++ exports this constructor; it is inline in this system's library.
void constructBadArrayNewLength(void* object) { new (object) std::bad_array_new_length; }

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
  if (symbol == "__ZNSt20bad_array_new_lengthC1Ev") return address(&constructBadArrayNewLength);
  return findListed(kCxxSymbols, symbol);
}

}  // namespace simulator
