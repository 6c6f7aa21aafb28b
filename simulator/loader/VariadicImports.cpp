#include "simulator/loader/VariadicImports.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

#include "simulator/macos/VariadicCalls.h"

// A function NAMEAsOnMac takes what the Mac's caller of NAME passes. On arm64 the variable
// arguments lie on the stack in slots of eight bytes, and a list of them (va_list) is the address
// of the next slot: the function passes that address on, after the named arguments, to
// NAMEFromSlots. On 64-bit Intel it goes to NAME itself.
#if defined(__aarch64__)
asm(R"(
.macro MRV_VARIADIC name, after
    .globl \name\()AsOnMac
    .hidden \name\()AsOnMac
    .type \name\()AsOnMac, %function
\name\()AsOnMac:
    mov \after, sp
    b \name\()FromSlots
    .size \name\()AsOnMac, . - \name\()AsOnMac
.endm
.macro MRV_LIST name, form
    .globl \name\()AsOnMac
    .hidden \name\()AsOnMac
    .type \name\()AsOnMac, %function
\name\()AsOnMac:
    b \form\()FromSlots
    .size \name\()AsOnMac, . - \name\()AsOnMac
.endm
)");
#else
asm(R"(
.macro MRV_VARIADIC name, after
    .globl \name\()AsOnMac
    .hidden \name\()AsOnMac
    .type \name\()AsOnMac, @function
\name\()AsOnMac:
    jmp \name\()@PLT
    .size \name\()AsOnMac, . - \name\()AsOnMac
.endm
.macro MRV_LIST name, form
    MRV_VARIADIC \name, none
.endm
)");
#endif
asm(R"(
    .text
    MRV_VARIADIC printf, x1
    MRV_VARIADIC fprintf, x2
    MRV_VARIADIC snprintf, x3
    MRV_VARIADIC sscanf, x2
    MRV_VARIADIC NSLog, x1
    MRV_VARIADIC CGEventCreateScrollWheelEvent, x4
    MRV_LIST vfprintf, fprintf
    MRV_LIST vsnprintf, snprintf
)");

extern "C" {
void printfAsOnMac();
void fprintfAsOnMac();
void snprintfAsOnMac();
void sscanfAsOnMac();
void NSLogAsOnMac();
void CGEventCreateScrollWheelEventAsOnMac();
void vfprintfAsOnMac();
void vsnprintfAsOnMac();
}

namespace {

// Linux's list of variable arguments on arm64, all of which are on the stack. A function takes its
// address.
struct ListOfSlots {
  explicit ListOfSlots(void* slots) : next(slots) {}

  void* next;
  void* generalRegisters = nullptr;
  void* vectorRegisters = nullptr;
  std::int32_t generalBytesLeft = 0;
  std::int32_t vectorBytesLeft = 0;
};

// Calls a function whose last parameter is a list. The compilers have a type of their own for it.
template <class Result, class Function, class... Arguments>
Result withList(Function* function, void* slots, Arguments... arguments) {
  using Called = Result (*)(Arguments..., ListOfSlots*);
  const auto plain = reinterpret_cast<void (*)()>(function);
  ListOfSlots list(slots);
  return reinterpret_cast<Called>(plain)(arguments..., &list);
}

}  // namespace

extern "C" {

int printfFromSlots(const char* format, void* slots) {
  return withList<int>(&std::vprintf, slots, format);
}

int fprintfFromSlots(std::FILE* file, const char* format, void* slots) {
  return withList<int>(&std::vfprintf, slots, file, format);
}

int snprintfFromSlots(char* text, std::size_t size, const char* format, void* slots) {
  return withList<int>(&std::vsnprintf, slots, text, size, format);
}

int sscanfFromSlots(const char* text, const char* format, void* slots) {
  return withList<int>(&std::vsscanf, slots, text, format);
}

void NSLogFromSlots(CFStringRef format, void* slots) {
  withList<void>(&simulator::logFormatted, slots, format);
}

CGEventRef CGEventCreateScrollWheelEventFromSlots(CGEventSourceRef, CGScrollEventUnit units,
                                                  std::uint32_t wheelCount, std::int32_t wheel1,
                                                  const std::int64_t* slots) {
  std::vector<std::int32_t> wheels = {wheel1};
  for (std::uint32_t i = 1; i < wheelCount; ++i) {
    wheels.push_back(static_cast<std::int32_t>(slots[i - 1]));
  }
  return simulator::createScrollWheelEvent(units, wheels.data(),
                                           static_cast<std::uint32_t>(wheels.size()));
}
}

namespace simulator {

void* asTheMacCalls(std::string_view symbol, void* function) {
  struct Import {
    std::string_view symbol;
    void (*function)();
  };
  static constexpr Import kImports[] = {
      {"_printf", printfAsOnMac},
      {"_fprintf", fprintfAsOnMac},
      {"_snprintf", snprintfAsOnMac},
      {"_sscanf", sscanfAsOnMac},
      {"_NSLog", NSLogAsOnMac},
      {"_CGEventCreateScrollWheelEvent", CGEventCreateScrollWheelEventAsOnMac},
      {"_vfprintf", vfprintfAsOnMac},
      {"_vsnprintf", vsnprintfAsOnMac},
  };
  const auto* const found =
      std::find_if(std::begin(kImports), std::end(kImports),
                   [&](const Import& import) { return import.symbol == symbol; });
  return found == std::end(kImports) ? function : reinterpret_cast<void*>(found->function);
}

}  // namespace simulator
