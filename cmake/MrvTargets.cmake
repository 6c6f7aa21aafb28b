# The compile options of all targets of the project, and the functions that define targets.

# Set here, not by a build that includes this project: the plug-in's libraries are linked into a
# loadable module and must be position-independent.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(MRV_ROOT "${CMAKE_CURRENT_SOURCE_DIR}")
# Below the prefix of what is installed.
include(GNUInstallDirs)
set(MRV_INSTALLED_HEADERS "${CMAKE_INSTALL_INCLUDEDIR}/mrv")

# mrv_folders(KIND OUTPUT): sets OUTPUT to the folders of one kind, in the order of
# cmake/folders.txt.
function(mrv_folders kind output)
  file(STRINGS "${MRV_ROOT}/cmake/folders.txt" lines REGEX "^${kind} ")
  list(TRANSFORM lines REPLACE "^[a-z]+ +([a-z/]+).*" "\\1")
  set(${output} ${lines} PARENT_SCOPE)
endfunction()

# mrv_compile_options(TARGET): sets the language, the warnings, the arithmetic and the sanitizers of a
# target.
function(mrv_compile_options target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                           -Wno-deprecated-declarations)
  # No fused multiply-add: the formulas require that each product and each sum is rounded.
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  # When optimising, g++ 12 gives these warnings about its own string class.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict
                                           -Wno-stringop-overflow -Wno-array-bounds>)
  if(MRV_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=${MRV_SANITIZE} -fno-omit-frame-pointer
                                            -fno-sanitize-recover=all)
    # Both checks need type information of the runner's functions and classes within the module.
    target_compile_options(${target} PUBLIC $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=vptr,function>)
    target_link_options(${target} PUBLIC -fsanitize=${MRV_SANITIZE})
  endif()
endfunction()

# mrv_count_branches(TARGET): with MRV_BRANCHES, counts the branches that run in the target, with those
# of the headers that it compiles. The counters can lie in a file, for processes that are killed.
function(mrv_count_branches target)
  if(MRV_BRANCHES)
    target_compile_options(${target} PRIVATE -fprofile-instr-generate -fcoverage-mapping
                           -fprofile-update=atomic "SHELL:-mllvm -runtime-counter-relocation")
    # A shared library brings what counts with it.
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "STATIC_LIBRARY")
      target_link_options(${target} PUBLIC -fprofile-instr-generate)
    else()
      target_link_options(${target} PRIVATE -fprofile-instr-generate)
    endif()
  endif()
endfunction()

# mrv_fuzz(TARGET): with MRV_FUZZ, lets the fuzzer follow which branches of the target run. What else
# -fsanitize=fuzzer-no-link counts would cost each test a quarter of its time.
function(mrv_fuzz target)
  if(MRV_FUZZ)
    target_compile_options(${target} PRIVATE
                           -fsanitize-coverage=inline-8bit-counters,trace-cmp)
  endif()
endfunction()

# mrv_count_lines(TARGET): with MRV_COVERAGE, counts the lines of the system's folders that run in the
# target: those of its own sources, and those of the headers that it compiles. With MRV_BRANCHES,
# counts branches instead.
function(mrv_count_lines target)
  mrv_count_branches(${target})
  if(NOT MRV_COVERAGE)
    return()
  endif()
  mrv_folders(system folders)
  list(JOIN folders | folders)
  target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic
                         "-fprofile-filter-files=^${MRV_ROOT}/(${folders})/.*")
  target_link_options(${target} PUBLIC --coverage)
endfunction()

# mrv_library(FOLDER SOURCES... [LIBRARIES ...] [FRAMEWORKS ...]): defines the static library
# mrv_FOLDER with the alias mrv::FOLDER. LIBRARIES: the folders that it calls; platform is one.
# FRAMEWORKS: the platform's frameworks that it calls; except on a Mac, the simulated Mac replaces all
# of them, and without one, the program that links the library must.
function(mrv_library folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;FRAMEWORKS")
  set(library mrv_${folder})
  add_library(${library} STATIC ${arg_UNPARSED_ARGUMENTS})
  add_library(mrv::${folder} ALIAS ${library})
  mrv_compile_options(${library})
  # A module that contains a unique symbol cannot be unloaded.
  target_compile_options(${library} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
                                            -ffunction-sections -fdata-sections)
  if(folder IN_LIST MRV_OPTIMISED_FOLDERS)
    target_compile_options(${library} PRIVATE -O2)
  endif()
  # Also in a build of several sources at a time, each source is compiled by itself, as in the bundle:
  # it must include what it needs.
  set_target_properties(${library} PROPERTIES CXX_VISIBILITY_PRESET hidden
                                              VISIBILITY_INLINES_HIDDEN ON UNITY_BUILD OFF)
  mrv_count_lines(${library})
  mrv_fuzz(${library})
  # The headers ask for less than the sources. What is built together is compiled alike.
  target_compile_features(${library} INTERFACE "$<BUILD_INTERFACE:cxx_std_20>" cxx_std_17)
  target_include_directories(${library} PUBLIC "$<BUILD_INTERFACE:${MRV_ROOT}>"
                                               "$<INSTALL_INTERFACE:${MRV_INSTALLED_HEADERS}>")
  set_target_properties(${library} PROPERTIES EXPORT_NAME ${folder}
                        MRV_LIBRARIES "${arg_LIBRARIES}" MRV_FRAMEWORKS "${arg_FRAMEWORKS}")
  list(TRANSFORM arg_LIBRARIES PREPEND mrv_)
  target_link_libraries(${library} PUBLIC ${arg_LIBRARIES})
  if(APPLE)
    list(TRANSFORM arg_FRAMEWORKS REPLACE "^(.+)$" "-framework \\1")
    target_link_libraries(${library} INTERFACE ${arg_FRAMEWORKS})
  elseif(arg_FRAMEWORKS AND MRV_SIMULATOR)
    target_link_libraries(${library}
                          INTERFACE "$<BUILD_INTERFACE:$<LINK_ONLY:mrv_simulator>>")
  endif()
endfunction()

# mrv_test(FOLDER SOURCES... [LIBRARIES ...] [FACET name]): defines the program test_FOLDER. Each of
# its tests is called FOLDER.SUITE.NAME and runs in a separate process. Further programs of a folder
# have a FACET: test_FOLDER_FACET with the tests FOLDER_FACET.SUITE.NAME.
function(mrv_test folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "FACET" "LIBRARIES")
  if(arg_FACET)
    string(APPEND folder _${arg_FACET})
  endif()
  string(REPLACE "/" "_" program test_${folder})
  add_executable(${program} ${arg_UNPARSED_ARGUMENTS})
  mrv_compile_options(${program})
  mrv_count_lines(${program})
  target_link_libraries(${program} PRIVATE ${arg_LIBRARIES} mrv_test_support)
  target_precompile_headers(${program} REUSE_FROM mrv_test_headers)
  add_dependencies(mrv_test_programs ${program})
  gtest_discover_tests(${program} TEST_PREFIX "${folder}." DISCOVERY_MODE PRE_TEST)
endfunction()

# mrv_mac_project(NAME SOURCE-FOLDER BUILD-FOLDER OPTIONS...): a project that is built with the cross
# toolchain as part of this build.
function(mrv_mac_project name source_folder build_folder)
  ExternalProject_Add(${name}
    SOURCE_DIR "${source_folder}"
    BINARY_DIR "${build_folder}"
    CMAKE_ARGS --log-level=WARNING
               -DCMAKE_TOOLCHAIN_FILE=${MRV_ROOT}/packaging/macos/toolchain.cmake
               -DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}
               -DCMAKE_COMPILE_WARNING_AS_ERROR=${CMAKE_COMPILE_WARNING_AS_ERROR}
               -DCMAKE_UNITY_BUILD_BATCH_SIZE=${CMAKE_UNITY_BUILD_BATCH_SIZE} ${ARGN}
    BUILD_COMMAND "${CMAKE_COMMAND}" --build "${build_folder}" -- --quiet
    BUILD_ALWAYS ON
    INSTALL_COMMAND "")
endfunction()

# mrv_join_processors(TARGET FILE): in a cross build for the Mac, which compiles for one processor, adds
# the code for the others to the FILE of the target, a path in the build folder. The code comes from
# builds of the same project in folders that are called after the processors.
function(mrv_join_processors target file)
  if(NOT MRV_FURTHER_PROCESSORS)
    return()
  endif()
  include(ExternalProject)
  find_program(MRV_LIPO llvm-lipo-${MRV_LLVM_VERSION} REQUIRED)
  set(slices)
  foreach(processor IN LISTS MRV_FURTHER_PROCESSORS)
    set(build "${PROJECT_BINARY_DIR}/${processor}")
    ExternalProject_Add(${target}_${processor}
      SOURCE_DIR "${PROJECT_SOURCE_DIR}"
      BINARY_DIR "${build}"
      CMAKE_ARGS --log-level=WARNING
                 "-DCMAKE_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE}"
                 "-DCMAKE_OSX_ARCHITECTURES=${processor}" -DMRV_FURTHER_PROCESSORS=
                 "-DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE}"
                 "-DCMAKE_CXX_FLAGS=${CMAKE_CXX_FLAGS}"
                 "-DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}"
                 "-DCMAKE_COMPILE_WARNING_AS_ERROR=${CMAKE_COMPILE_WARNING_AS_ERROR}"
                 "-DMACOS_SDK=${MACOS_SDK}" "-DMRV_MAKERSRC=${MRV_MAKERSRC}"
      BUILD_COMMAND "${CMAKE_COMMAND}" --build "${build}" --target ${target} -- --quiet
      BUILD_BYPRODUCTS "${build}/${file}"
      BUILD_ALWAYS ON
      INSTALL_COMMAND "")
    add_dependencies(${target}_${processor} mrv_makersrc)
    add_dependencies(${target} ${target}_${processor})
    list(APPEND slices "${build}/${file}")
  endforeach()
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${slices}")
  set(joined "${PROJECT_BINARY_DIR}/${file}")
  add_custom_command(TARGET ${target} POST_BUILD
                     COMMAND "${MRV_LIPO}" -create "${joined}" ${slices} -output "${joined}" VERBATIM)
endfunction()

# mrv_benchmark(NAME SOURCES... [LIBRARIES ...]): defines a Google Benchmark program.
function(mrv_benchmark name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES")
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  mrv_compile_options(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} benchmark::benchmark_main)
endfunction()
