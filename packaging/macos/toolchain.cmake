# Cross toolchain: builds Mach-O files for macOS 10.13 on x86-64 and macOS 11.0 on arm64 on Linux, with
# the distribution's clang, lld and C++ library headers.
#
#   cmake -S . -B build/bundle --toolchain packaging/macos/toolchain.cmake [-DMACOS_SDK=DIR]
#
# The target's C headers and the lists of symbols that its libraries export come from sysroot/ in
# this folder, or from a real SDK if MACOS_SDK is set. The C++ library's headers are always the
# distribution's, because libcxx/__config_site fits only those.

include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/LlvmForMac.cmake")

set(MACOS_SDK "" CACHE PATH "A real macOS SDK to build with instead of packaging/macos/sysroot")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MACOS_SDK)

# The C++ library of the oldest system is older than these headers: the bundle brings what it lacks.
set(MRV_NEWER_CXX_HEADERS ON)

if(MACOS_SDK)
  set(CMAKE_OSX_SYSROOT "${MACOS_SDK}" CACHE PATH "" FORCE)
  include("${CMAKE_CURRENT_LIST_DIR}/use-restored-stubs.cmake")
else()
  set(CMAKE_OSX_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/sysroot" CACHE PATH "" FORCE)
endif()

set(MRV_LIBCXX_HEADERS /usr/lib/llvm-${MRV_LLVM_VERSION}/include/c++/v1)
string(CONCAT CMAKE_CXX_FLAGS_INIT
  "\"-stdlib++-isystem${CMAKE_CURRENT_LIST_DIR}/libcxx\" "
  "\"-stdlib++-isystem${MRV_LIBCXX_HEADERS}\"")
if(MACOS_SDK)
  # As with the headers in platform/macos, a call makes a CFSTR literal, not the compiler.
  string(APPEND CMAKE_CXX_FLAGS_INIT " -fno-constant-cfstrings")
else()
  string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem \"${CMAKE_CURRENT_LIST_DIR}/../../platform/macos\"")
endif()
