# Writes Version.cpp with the version and the commit, at each build and only if one has changed:
#   cmake -D version=... -D source=... -D output=... -P version.cmake
find_package(Git QUIET)
if(GIT_FOUND)
  execute_process(COMMAND "${GIT_EXECUTABLE}" rev-parse --short=10 HEAD
                  WORKING_DIRECTORY "${source}" OUTPUT_VARIABLE commit ERROR_QUIET
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()
if(commit)
  set(commit " (${commit})")
endif()
configure_file("${source}/Version.cpp.in" "${output}" @ONLY)
