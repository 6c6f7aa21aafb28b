#include "simulator/loader/OwnProcessor.h"

#include <elf.h>
#include <fmt/format.h>

#include "simulator/loader/ByteReader.h"

// Defined by the linker: the header of the ELF file that this code is in.
extern "C" const Elf64_Ehdr __ehdr_start __attribute__((visibility("hidden")));

namespace simulator {

mach::Processor ownProcessor() {
  switch (__ehdr_start.e_machine) {
    case EM_X86_64:
      return mach::kX86_64;
    case EM_AARCH64:
      return mach::kArm64;
    default:
      throw LoadError(
          fmt::format("no Mac has this processor (ELF machine {})", __ehdr_start.e_machine));
  }
}

}  // namespace simulator
