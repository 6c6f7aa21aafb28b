# Cross toolchain: builds Mach-O files for macOS 10.13 on x86-64 on Linux, with the distribution's
# clang, lld and C++ library headers.
#
#   cmake -S . -B build/bundle --toolchain packaging/macos/toolchain.cmake [-DMACOS_SDK=DIR]
#
# The target's C headers and the lists of symbols that its libraries export come from sysroot/ in
# this folder, or from a real SDK if MACOS_SDK is set. The C++ library's headers are always the
# distribution's, because libcxx/__config_site fits only those.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 17.0)  # the kernel of macOS 10.13
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(MACOS_SDK "" CACHE PATH "A real macOS SDK to build with instead of packaging/macos/sysroot")
set(MRV_LLVM_VERSION 19 CACHE STRING "Version of the distribution's LLVM packages")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MACOS_SDK MRV_LLVM_VERSION)

set(CMAKE_CXX_COMPILER clang++-${MRV_LLVM_VERSION})
set(CMAKE_AR llvm-ar-${MRV_LLVM_VERSION} CACHE FILEPATH "")
set(CMAKE_RANLIB llvm-ranlib-${MRV_LLVM_VERSION} CACHE FILEPATH "")
set(CMAKE_NM llvm-nm-${MRV_LLVM_VERSION} CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-${MRV_LLVM_VERSION} CACHE FILEPATH "")

set(CMAKE_CXX_COMPILER_TARGET x86_64-apple-macos10.13)
set(CMAKE_OSX_DEPLOYMENT_TARGET 10.13 CACHE STRING "")
if(MACOS_SDK)
  set(CMAKE_OSX_SYSROOT "${MACOS_SDK}" CACHE PATH "" FORCE)
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
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-fuse-ld=lld")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${CMAKE_MODULE_LINKER_FLAGS_INIT}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${CMAKE_MODULE_LINKER_FLAGS_INIT}")

# CMake's checks can only compile: programs for the target do not run on the build machine.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
