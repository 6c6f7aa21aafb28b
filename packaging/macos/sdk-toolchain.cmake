# The native build on Linux: the distribution's clang and lld with a copy of the platform's SDK, of
# which the headers and the stubs of the libraries are used as a Mac uses them. The C++ library's
# headers are the distribution's, because those of a public copy are older than the sources' C++.
#
#   MACOS_SDK=DIR cmake --preset macos-cross
#
# The copy must have the folders usr and System.

include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/LlvmForMac.cmake")
set(MACOS_SDK "$ENV{MACOS_SDK}" CACHE PATH "A copy of the platform's SDK")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MACOS_SDK)
if(NOT EXISTS "${MACOS_SDK}/usr/include/c++/v1" OR NOT EXISTS "${MACOS_SDK}/System/Library/Frameworks")
  message(FATAL_ERROR "MACOS_SDK is '${MACOS_SDK}': it must name a folder with usr/include/c++/v1 and "
                      "System/Library/Frameworks")
endif()
set(CMAKE_OSX_SYSROOT "${MACOS_SDK}" CACHE PATH "" FORCE)
include("${CMAKE_CURRENT_LIST_DIR}/use-restored-stubs.cmake")

set(MRV_LIBCXX_HEADERS /usr/lib/llvm-${MRV_LLVM_VERSION}/include/c++/v1)
foreach(language IN ITEMS CXX OBJCXX)
  string(CONCAT CMAKE_${language}_FLAGS_INIT
    "\"-stdlib++-isystem${CMAKE_CURRENT_LIST_DIR}/sdk-libcxx\" "
    "\"-stdlib++-isystem${MRV_LIBCXX_HEADERS}\"")
endforeach()
