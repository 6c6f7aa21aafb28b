# What `cmake --install` copies, and the package that `cpack` makes of it.
#
#   PREFIX/bin/mrvsim                  a link to the program
#   PREFIX/lib/mrvphotoshop/           the program, the simulated Mac, the live window, the module; the
#                                      bundle if built
#   PREFIX/share/mrvphotoshop/         scenarios, schemas
#   PREFIX/share/doc/mrvphotoshop/     documents
#   PREFIX/share/man/man1/             the manual page, and the completions where shells look
set(program_folder lib/mrvphotoshop)
set(data_folder share/mrvphotoshop)
set(document_folder share/doc/mrvphotoshop)
set(pages "${PROJECT_BINARY_DIR}/pages")

# The program finds the others in its own folder.
set(programs mrvsim mrv_simulator MoravinClient MrvPhotoshop)
if(MRV_LIVE)
  list(APPEND programs MrvLive)
endif()
set_target_properties(${programs} PROPERTIES INSTALL_RPATH "$ORIGIN")
install(TARGETS ${programs}
        RUNTIME DESTINATION ${program_folder} LIBRARY DESTINATION ${program_folder})
install(CODE [[
  set(bin "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin")
  file(MAKE_DIRECTORY "${bin}")
  file(CREATE_LINK ../lib/mrvphotoshop/mrvsim "${bin}/mrvsim" SYMBOLIC)
]])

set(MRV_INSTALLED_BUNDLE "${MRV_ROOT}/build/bundle/MrvPhotoshop.plugin" CACHE PATH
    "The bundle to install if it is there; packaging/bundle builds it")
install(DIRECTORY "${MRV_INSTALLED_BUNDLE}" DESTINATION ${program_folder} USE_SOURCE_PERMISSIONS
        OPTIONAL)

install(DIRECTORY "${MRV_ROOT}/tests/scenarios/" DESTINATION ${data_folder}/scenarios
        FILES_MATCHING PATTERN "*.json" PATTERN "make_flight.py")
install(DIRECTORY "${MRV_ROOT}/schemas" DESTINATION ${data_folder})
install(FILES README.md CONTRIBUTING.md CHANGELOG.md DESTINATION ${document_folder})
install(DIRECTORY "${MRV_ROOT}/docs" DESTINATION ${document_folder})
install(FILES LICENSE DESTINATION ${document_folder} RENAME copyright)

install(FILES "${pages}/mrvsim.1" DESTINATION share/man/man1)
install(FILES "${pages}/mrvsim.bash" DESTINATION share/bash-completion/completions RENAME mrvsim)
# The distribution's zsh looks in different folders for packages and for what is installed by hand.
install(CODE "set(script \"${pages}/_mrvsim\")")
install(CODE [[
  set(folder site-functions)
  if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(folder vendor-completions)
  endif()
  file(INSTALL "${script}" DESTINATION "${CMAKE_INSTALL_PREFIX}/share/zsh/${folder}")
]])

# Building everything first is for `cmake --build`; a package is made of what was built.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME mrvphotoshop)
set(CPACK_PACKAGE_CONTACT "The MrvPhotoshop developers <mrvphotoshop@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "Simulated Mac, host and 3D mouse for the plug-in MrvPhotoshop")
set(CPACK_PACKAGE_DESCRIPTION
    "Plays scenarios of device motion in the plug-in and logs everything that it does, without a Mac.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/bin")
# The bundle's C++ library, which is loaded by name, and the live window's fonts.
set(CPACK_DEBIAN_PACKAGE_DEPENDS libc++1-19)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-inter, fonts-dejavu-core")
include(CPack)
