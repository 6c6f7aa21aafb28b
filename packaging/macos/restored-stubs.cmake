# Puts corrected stubs before those of an SDK copy that has lost lists of re-exported libraries.
set(MRV_RESTORED_STUBS "${CMAKE_BINARY_DIR}/restored-stubs")
find_program(MRV_READTAPI llvm-readtapi-${MRV_LLVM_VERSION} REQUIRED)
find_program(MRV_PYTHON python3 REQUIRED)
execute_process(
  COMMAND "${MRV_PYTHON}" "${CMAKE_CURRENT_LIST_DIR}/restore-reexports" "${MACOS_SDK}"
          "${MRV_RESTORED_STUBS}"
  OUTPUT_VARIABLE restored COMMAND_ERROR_IS_FATAL ANY)
string(STRIP "${restored}" restored)
string(REPLACE "\n" ", " restored "${restored}")
if(restored)
  message(NOTICE "This copy of the SDK has lost what these frameworks re-export; their parts' stubs "
                 "say what it was: ${restored}")
endif()
add_link_options("-F${MRV_RESTORED_STUBS}")
