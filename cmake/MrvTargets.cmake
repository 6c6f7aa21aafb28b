# How every target of the project is compiled, and the functions that make the targets.

# Without this a build that takes the project in would decide about position independence, and the
# system's libraries have to fit into a loadable module.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(MRV_ROOT "${CMAKE_CURRENT_SOURCE_DIR}")

# mrv_compile_options(TARGET): the language, the warnings and the instrumentation of all targets.
function(mrv_compile_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                           -Wno-deprecated-declarations)
  # Version 12 warns of its own string class.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict
                                           -Wno-stringop-overflow -Wno-array-bounds>)
  if(MRV_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=${MRV_SANITIZE} -fno-omit-frame-pointer
                                            -fno-sanitize-recover=all)
    # Both would ask a module for the type information of the runner's functions and classes.
    target_compile_options(${target} PUBLIC $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=vptr,function>)
    target_link_options(${target} PUBLIC -fsanitize=${MRV_SANITIZE})
  endif()
  if(MRV_COVERAGE)
    target_compile_options(${target} PUBLIC --coverage -fprofile-update=atomic)
    target_link_options(${target} PUBLIC --coverage)
  endif()
endfunction()

# mrv_system_library(NAME SOURCES...): one static library for one of the system's folders.
# A product of sums is never contracted into a fused operation: the formulas fix each rounding.
function(mrv_system_library name)
  add_library(${name} STATIC ${ARGN})
  mrv_compile_options(${name})
  target_compile_options(${name} PUBLIC -ffp-contract=off)
  # A unique symbol would keep the module that it ends up in from being unloaded.
  target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
                                         -ffunction-sections -fdata-sections)
  set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden
                                           VISIBILITY_INLINES_HIDDEN ON
                                           # The folders call one another in a ring.
                                           LINK_INTERFACE_MULTIPLICITY 4)
  target_include_directories(${name} PUBLIC "${MRV_ROOT}")
  target_link_libraries(${name} PUBLIC platform)
endfunction()

# mrv_test(NAME SOURCES... [LIBRARIES ...]): a test program of which each test runs in a process
# of its own.
function(mrv_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  mrv_compile_options(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock GTest::gtest_main
                                        fmt::fmt)
  target_precompile_headers(${name} REUSE_FROM test_headers)
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
                       PROPERTIES TIMEOUT 120)
endfunction()

# mrv_benchmark(NAME SOURCES... [LIBRARIES ...]): a Google Benchmark program.
function(mrv_benchmark name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  mrv_compile_options(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} benchmark::benchmark_main)
endfunction()
