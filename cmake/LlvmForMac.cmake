# What both cross toolchains have in common: the distribution's clang, lld and binary utilities, which
# build Mach-O files on Linux.

include("${CMAKE_CURRENT_LIST_DIR}/MacTarget.cmake")
set(MRV_FURTHER_PROCESSORS arm64 CACHE STRING "Other processors that the bundle has code for")

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 17.0)  # the kernel of macOS 10.13
set(CMAKE_SYSTEM_PROCESSOR "${CMAKE_OSX_ARCHITECTURES}")

set(MRV_LLVM_VERSION 19 CACHE STRING "Version of the distribution's LLVM packages")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MRV_LLVM_VERSION)

set(CMAKE_AR llvm-ar-${MRV_LLVM_VERSION} CACHE FILEPATH "")
set(CMAKE_RANLIB llvm-ranlib-${MRV_LLVM_VERSION} CACHE FILEPATH "")
set(CMAKE_NM llvm-nm-${MRV_LLVM_VERSION} CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-${MRV_LLVM_VERSION} CACHE FILEPATH "")
# A language that the project enables later needs the compiler's whole path.
find_program(MRV_CLANG clang++-${MRV_LLVM_VERSION} REQUIRED)
foreach(language IN ITEMS CXX OBJCXX)
  set(CMAKE_${language}_COMPILER "${MRV_CLANG}")
  # -arch overrides the processor that is named here, and -mmacosx-version-min adds the version.
  set(CMAKE_${language}_COMPILER_TARGET ${CMAKE_SYSTEM_PROCESSOR}-apple-macos)
endforeach()
foreach(kind IN ITEMS MODULE EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld")
endforeach()

# CMake's checks can only compile: programs for the target do not run on the build machine.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
