# What every build for the Mac is built for: the native one, the one with an SDK on Linux, and the
# one with this project's own stubs. CMake itself makes empty entries of these in the cache.
if(NOT CMAKE_OSX_ARCHITECTURES)
  set(processors "x86_64;arm64")
  if(CMAKE_TOOLCHAIN_FILE)
    # Only Apple's archiver holds objects for several processors in one library: a cross build compiles
    # for one processor, and mrv_join_processors makes a build for each of the others.
    set(processors x86_64)
  endif()
  set(CMAKE_OSX_ARCHITECTURES "${processors}" CACHE STRING "The processors to compile for" FORCE)
endif()
if(NOT CMAKE_OSX_DEPLOYMENT_TARGET)
  # The compiler raises it to 11.0 in code for arm64, the first system on that processor.
  set(CMAKE_OSX_DEPLOYMENT_TARGET 10.13 CACHE STRING "The oldest system that loads the bundle" FORCE)
endif()
