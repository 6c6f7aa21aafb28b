# What every build for the Mac is built for: the native one, the one with an SDK on Linux, and the
# one with this project's own stubs. CMake itself makes empty entries of these in the cache.
if(NOT CMAKE_OSX_ARCHITECTURES)
  set(CMAKE_OSX_ARCHITECTURES "x86_64;arm64" CACHE STRING "The processors that the bundle has code for" FORCE)
endif()
if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
  # The compiler raises it to 11.0 in code for arm64, the first system on that processor.
  set(CMAKE_OSX_DEPLOYMENT_TARGET 10.13 CACHE STRING "The oldest system that loads the bundle" FORCE)
endif()
