# The host-side description, and the tool that converts its readable form to a resource.
set(MRV_RESOURCE_SOURCES
  "${CMAKE_CURRENT_LIST_DIR}/HostDescription.cpp"
  "${CMAKE_CURRENT_LIST_DIR}/ResourceFork.cpp")
set(MRV_RESOURCE_TOOL_SOURCES ${MRV_RESOURCE_SOURCES} "${CMAKE_CURRENT_LIST_DIR}/makersrc.cpp")

if(MRV_MAKERSRC)
  # The build that this one is a part of has the tool.
  add_custom_target(mrv_makersrc)
elseif(APPLE AND CMAKE_CROSSCOMPILING)
  # The tool runs on the build machine.
  find_program(MRV_BUILD_CXX NAMES c++ g++ clang++ clang++-19 REQUIRED)
  set(MRV_MAKERSRC "${CMAKE_CURRENT_BINARY_DIR}/makersrc")
  file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/*.h")
  add_custom_command(
    OUTPUT "${MRV_MAKERSRC}"
    COMMAND "${MRV_BUILD_CXX}" -std=c++20 -I "${MRV_ROOT}" ${MRV_RESOURCE_TOOL_SOURCES} -o "${MRV_MAKERSRC}"
    DEPENDS ${MRV_RESOURCE_TOOL_SOURCES} ${headers}
    COMMENT "Building the resource tool" VERBATIM)
  add_custom_target(mrv_makersrc DEPENDS "${MRV_MAKERSRC}")
else()
  add_library(mrv_hostresource STATIC ${MRV_RESOURCE_SOURCES})
  mrv_compile_options(mrv_hostresource)
  target_include_directories(mrv_hostresource PUBLIC "${MRV_ROOT}")
  add_executable(mrv_makersrc "${CMAKE_CURRENT_LIST_DIR}/makersrc.cpp")
  mrv_compile_options(mrv_makersrc)
  set_target_properties(mrv_makersrc PROPERTIES OUTPUT_NAME makersrc)
  target_link_libraries(mrv_makersrc PRIVATE mrv_hostresource)
  set(MRV_MAKERSRC mrv_makersrc)
endif()
