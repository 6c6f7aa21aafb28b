# The target docs: pages of the headers' comments in docs/html of the build folder. A warning is an
# error.
find_program(MRV_DOXYGEN doxygen)
set(templates "${MRV_ROOT}/cmake/toolkit")
list(TRANSFORM MRV_SYSTEM_FOLDERS REPLACE "(.+)" "\"${MRV_ROOT}/\\1\"" OUTPUT_VARIABLE doxygen_input)
list(APPEND doxygen_input "\"${MRV_ROOT}/platform/FourCharCode.h\"" "\"${templates}/MainPage.md\"")
list(JOIN doxygen_input " " doxygen_input)
configure_file("${templates}/Doxyfile.in" "${PROJECT_BINARY_DIR}/docs/Doxyfile" @ONLY)
configure_file("${templates}/doxygen.awk" "${PROJECT_BINARY_DIR}/docs/doxygen.awk" COPYONLY)
if(MRV_DOXYGEN)
  add_custom_target(docs
    COMMAND "${CMAKE_COMMAND}" -E rm -rf html
    COMMAND "${MRV_DOXYGEN}" Doxyfile
    WORKING_DIRECTORY "${PROJECT_BINARY_DIR}/docs"
    COMMENT "Writing the reference" VERBATIM)
else()
  add_custom_target(docs COMMAND "${CMAKE_COMMAND}" -E echo "docs: doxygen is not installed"
                         COMMAND "${CMAKE_COMMAND}" -E false VERBATIM)
endif()
