# Runs the layout check against an SDK that is a copy of the headers, in several folders like a real
# SDK, and without the one that is not the host's. EXPECTED is "same" for an unchanged copy, with
# which a library is then built, too; "moved" for one in which two procedures of the control suite are
# swapped.
file(REMOVE_RECURSE "${FOLDER}")
file(GLOB manager "${ROOT}/platform/host/SP*.h")
file(GLOB application "${ROOT}/platform/host/[!S]*.h")
list(FILTER application EXCLUDE REGEX "/HostTerms.h$")
file(COPY ${manager} DESTINATION "${FOLDER}/sdk/manager")
file(COPY ${application} DESTINATION "${FOLDER}/sdk/application")

if(EXPECTED STREQUAL "moved")
  set(actions "${FOLDER}/sdk/application/PIActions.h")
  file(READ "${actions}" text)
  string(REPLACE "(*BeginProfile)" "(*Exchanged)" text "${text}")
  string(REPLACE "(*EndProfile)" "(*BeginProfile)" text "${text}")
  string(REPLACE "(*Exchanged)" "(*EndProfile)" text "${text}")
  file(WRITE "${actions}" "${text}")
endif()

execute_process(
  COMMAND "${CMAKE_COMMAND}" -S "${ROOT}" -B "${FOLDER}/build" -G "${GENERATOR}"
          "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DMRV_HOST_SDK=${FOLDER}/sdk" -DMRV_TESTS=OFF
          -DMRV_BENCH=OFF
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${FOLDER}/build" --target mrv_host_layout_sdk
                OUTPUT_VARIABLE errors ERROR_VARIABLE errors RESULT_VARIABLE status)

if(EXPECTED STREQUAL "same" AND NOT status EQUAL 0)
  message(FATAL_ERROR "The interface does not pass its own check:\n${errors}")
elseif(EXPECTED STREQUAL "moved" AND NOT errors MATCHES
       "PSActionControlProcs::BeginProfile lies elsewhere")
  message(FATAL_ERROR "The check does not notice a moved member:\n${errors}")
endif()

if(EXPECTED STREQUAL "same")
  # A name that only the copy has shows that the library is built with it.
  file(APPEND "${FOLDER}/sdk/manager/SPBasic.h" "#error built with the copy\n")
  set(library "${CMAKE_COMMAND}" --build "${FOLDER}/build" --target mrv_suites)
  execute_process(COMMAND ${library} OUTPUT_VARIABLE errors ERROR_VARIABLE errors)
  if(NOT errors MATCHES "built with the copy")
    message(FATAL_ERROR "The library is not built with the SDK:\n${errors}")
  endif()
  file(COPY "${ROOT}/platform/host/SPBasic.h" DESTINATION "${FOLDER}/sdk/manager")
  execute_process(COMMAND ${library} OUTPUT_VARIABLE errors ERROR_VARIABLE errors
                  RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "The library is not built:\n${errors}")
  endif()
  file(STRINGS "${FOLDER}/build/compile_commands.json" commands REGEX "Suites.cpp")
  if(NOT commands OR commands MATCHES "-I${ROOT}/platform/host")
    message(FATAL_ERROR "Our headers are on the path beside the SDK's: ${commands}")
  endif()
endif()
