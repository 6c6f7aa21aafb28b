# How every target of the project is compiled, and the functions that make the targets.

# A build that takes the project in may not decide about position independence: the system's
# libraries have to fit into a loadable module.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(MRV_ROOT "${CMAKE_CURRENT_SOURCE_DIR}")

# mrv_folders(KIND OUTPUT): the folders of one kind in cmake/folders.txt, from the top down.
function(mrv_folders kind output)
  file(STRINGS "${MRV_ROOT}/cmake/folders.txt" lines REGEX "^${kind} ")
  list(TRANSFORM lines REPLACE "^[a-z]+ +([a-z/]+).*" "\\1")
  set(${output} ${lines} PARENT_SCOPE)
endfunction()

# mrv_compile_options(TARGET): the language, the warnings and the sanitizers of all targets.
function(mrv_compile_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                           -Wno-deprecated-declarations)
  # g++ 12 warns about its own string class when it optimises.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict
                                           -Wno-stringop-overflow -Wno-array-bounds>)
  if(MRV_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=${MRV_SANITIZE} -fno-omit-frame-pointer
                                            -fno-sanitize-recover=all)
    # Both would ask a module for the type information of the runner's functions and classes.
    target_compile_options(${target} PUBLIC $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=vptr,function>)
    target_link_options(${target} PUBLIC -fsanitize=${MRV_SANITIZE})
  endif()
endfunction()

# mrv_library(FOLDER SOURCES... [LIBRARIES ...] [FRAMEWORKS ...]): the static library mrv_FOLDER,
# known to other builds as mrv::FOLDER. LIBRARIES: the folders that it calls. FRAMEWORKS: those of
# the platform that it calls; elsewhere than on a Mac the simulated Mac stands for all of them.
function(mrv_library folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;FRAMEWORKS")
  set(library mrv_${folder})
  add_library(${library} STATIC ${arg_UNPARSED_ARGUMENTS})
  add_library(mrv::${folder} ALIAS ${library})
  mrv_compile_options(${library})
  # The formulas fix each rounding, so a product of sums is never contracted into a fused operation.
  target_compile_options(${library} PUBLIC -ffp-contract=off)
  # A unique symbol would keep the module that it ends up in from being unloaded.
  target_compile_options(${library} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
                                            -ffunction-sections -fdata-sections)
  set_target_properties(${library} PROPERTIES CXX_VISIBILITY_PRESET hidden
                                              VISIBILITY_INLINES_HIDDEN ON)
  if(MRV_COVERAGE)
    target_compile_options(${library} PRIVATE --coverage -fprofile-update=atomic)
    target_link_options(${library} INTERFACE --coverage)
  endif()
  target_include_directories(${library} PUBLIC "${MRV_ROOT}")
  list(TRANSFORM arg_LIBRARIES PREPEND mrv_)
  target_link_libraries(${library} PUBLIC ${arg_LIBRARIES} mrv_platform)
  if(APPLE)
    list(TRANSFORM arg_FRAMEWORKS REPLACE "^(.+)$" "-framework \\1")
    target_link_libraries(${library} INTERFACE ${arg_FRAMEWORKS})
  elseif(arg_FRAMEWORKS)
    target_link_libraries(${library} INTERFACE mrv_simulator)
  endif()
endfunction()

# mrv_test(FOLDER SOURCES... [LIBRARIES ...] [FACET name]): the program test_FOLDER. Each of its tests
# runs in a process of its own, as FOLDER.SUITE.NAME. A folder that needs several programs gives the
# others a FACET: test_FOLDER_FACET with FOLDER_FACET.SUITE.NAME.
function(mrv_test folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FACET" "LIBRARIES")
  if(arg_FACET)
    string(APPEND folder _${arg_FACET})
  endif()
  string(REPLACE "/" "_" program test_${folder})
  add_executable(${program} ${arg_UNPARSED_ARGUMENTS})
  mrv_compile_options(${program})
  target_link_libraries(${program} PRIVATE ${arg_LIBRARIES} mrv_test_support)
  target_precompile_headers(${program} REUSE_FROM mrv_test_headers)
  gtest_discover_tests(${program} TEST_PREFIX "${folder}." DISCOVERY_MODE PRE_TEST)
endfunction()

# mrv_benchmark(NAME SOURCES... [LIBRARIES ...]): a Google Benchmark program.
function(mrv_benchmark name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  mrv_compile_options(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} benchmark::benchmark_main)
endfunction()
