# Runs the layout check against an SDK that is a copy of the headers, in several folders like a real
# SDK. EXPECTED is "same" for an unchanged copy, "moved" for one in which two procedures of the
# control suite are swapped.
file(REMOVE_RECURSE "${FOLDER}")
file(GLOB manager "${ROOT}/platform/host/SP*.h")
file(GLOB application "${ROOT}/platform/host/[!S]*.h")
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
