# Cross toolchain: builds the simulated Mac for arm64 Linux, so that the arm64 code of a Mac plug-in runs
# in it, on such a machine or under qemu.
#
#   cmake -S . -B build/arm64 --toolchain cmake/Arm64Linux.cmake -DMRV_ARM64_ROOT=DIR
#
# DIR holds that Linux, with the C and C++ libraries and the packages that the project needs;
# need_arm64 in scripts/setup.sh unpacks one.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(MRV_ARM64_ROOT "" CACHE PATH "A folder with arm64 Linux")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MRV_ARM64_ROOT)
if(NOT EXISTS "${MRV_ARM64_ROOT}/usr/include/c++")
  message(FATAL_ERROR "MRV_ARM64_ROOT is '${MRV_ARM64_ROOT}': it must name a folder with arm64 Linux; "
                      "need_arm64 in scripts/setup.sh unpacks one")
endif()
set(CMAKE_SYSROOT "${MRV_ARM64_ROOT}")
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

find_program(MRV_CLANG clang++-19 REQUIRED)
set(CMAKE_CXX_COMPILER "${MRV_CLANG}")
set(CMAKE_CXX_COMPILER_TARGET aarch64-linux-gnu)
# The Mac's rules on this processor: a caller extends small integers to 32 bits, and char is signed.
set(CMAKE_CXX_FLAGS_INIT "-mabi=darwinpcs -fsigned-char")
foreach(kind IN ITEMS MODULE EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld")
endforeach()

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(MRV_QEMU NAMES qemu-aarch64-static qemu-aarch64)
if(MRV_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${MRV_QEMU};-L;${MRV_ARM64_ROOT}")
endif()
