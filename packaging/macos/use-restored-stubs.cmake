# For toolchains with an SDK: the build's project() includes restored-stubs.cmake. CMake's checks of the
# compiler, which are projects too, do not link.
get_property(is_check GLOBAL PROPERTY IN_TRY_COMPILE)
if(NOT is_check)
  set(CMAKE_PROJECT_INCLUDE "${CMAKE_CURRENT_LIST_DIR}/restored-stubs.cmake")
endif()
