# Builds the project in outside/ with the toolkit.
#
#   WAY=installed   with what BUILD, a build of the toolkit, installs, after it was moved
#   WAY=alone       with what a build of ROOT without the plug-in and the simulator installs
#   WAY=taken-in    with the sources in ROOT, without the plug-in, the simulator and their libraries
#   OUTSIDE         the libraries of which programs are built
#   TOOLCHAIN       a toolchain for the Mac; empty to build for this machine, and to run the programs
#   COMPILER, LAUNCHER, GENERATOR, FOLDER

# run(COMMAND...): what the command prints is shown if it fails.
function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}: ${status}\n${output}")
  endif()
endfunction()

file(REMOVE_RECURSE "${FOLDER}")
set(options -G "${GENERATOR}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}")
if(TOOLCHAIN)
  list(APPEND options "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
else()
  list(APPEND options "-DCMAKE_CXX_COMPILER=${COMPILER}")
endif()

# The toolkit must not look for the libraries of the simulator.
set(without -DMRV_SIMULATOR=OFF)
foreach(package IN ITEMS benchmark CLI11 fmt GTest nlohmann_json PkgConfig SDL2 Threads)
  list(APPEND without -DCMAKE_DISABLE_FIND_PACKAGE_${package}=ON)
endforeach()

if(WAY STREQUAL "taken-in")
  list(APPEND options "-DMRV_SOURCE=${ROOT}" ${without})
else()
  if(WAY STREQUAL "alone")
    set(BUILD "${FOLDER}/toolkit")
    run("${CMAKE_COMMAND}" -S "${ROOT}" -B "${BUILD}" ${options} ${without})
    run("${CMAKE_COMMAND}" --build "${BUILD}")
  endif()
  run("${CMAKE_COMMAND}" --install "${BUILD}" --component toolkit --prefix "${FOLDER}/first")
  file(RENAME "${FOLDER}/first" "${FOLDER}/prefix")
  list(APPEND options "-DMrv_ROOT=${FOLDER}/prefix")
endif()

list(JOIN OUTSIDE "\\;" outside)
run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}/outside" -B "${FOLDER}/build" ${options}
    "-DOUTSIDE=${outside}")
foreach(library IN LISTS OUTSIDE)
  set(program "${FOLDER}/build/outside_${library}")
  run("${CMAKE_COMMAND}" --build "${FOLDER}/build" --target outside_${library})
  if(TOOLCHAIN)
    file(READ "${program}" magic LIMIT 4 HEX)
    if(NOT magic STREQUAL "cffaedfe")
      message(FATAL_ERROR "${program} is not a Mac's program: ${magic}")
    endif()
    execute_process(COMMAND llvm-nm-19 --undefined-only --demangle "${program}"
                    OUTPUT_VARIABLE missing COMMAND_ERROR_IS_FATAL ANY)
    if(missing MATCHES "CMatrix4D|HostStringMatch|LongToStr|sPS")
      message(FATAL_ERROR "${program} is linked without the toolkit:\n${missing}")
    endif()
  else()
    run("${program}")
  endif()
endforeach()
