# The toolkit as `cmake --install` copies it: the system's folders as libraries for other projects,
# which find them with find_package(Mrv) or pkg-config. `--component toolkit` installs it alone.
#
#   PREFIX/include/mrv/           the headers, included as "hostutil/Strings.h"
#   PREFIX/lib/libmrv_FOLDER.a
#   PREFIX/lib/cmake/Mrv/         the targets mrv::FOLDER
#   PREFIX/lib/pkgconfig/         mrv-FOLDER.pc
#
# What is installed may be moved.
include(CMakePackageConfigHelpers)
set(templates "${MRV_ROOT}/cmake/toolkit")
set(made "${PROJECT_BINARY_DIR}/toolkit")
set(config_folder "${CMAKE_INSTALL_LIBDIR}/cmake/Mrv")

# mrv_install_headers(FROM TO): the headers of a folder, without those of folders in it.
function(mrv_install_headers from to)
  file(GLOB headers CONFIGURE_DEPENDS "${from}/*.h")
  install(FILES ${headers} DESTINATION "${MRV_INSTALLED_HEADERS}/${to}" COMPONENT toolkit)
endfunction()

# mrv_install_pkg_config(FOLDER SUMMARY FLAGS LINKED REQUIRED): mrv-FOLDER.pc. LINKED: its library and
# the frameworks; REQUIRED: folders.
function(mrv_install_pkg_config folder summary flags linked required)
  list(TRANSFORM required PREPEND mrv-)
  list(JOIN required " " required)
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
             BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig"
             OUTPUT_VARIABLE to_prefix)
  configure_file("${templates}/mrv.pc.in" "${made}/mrv-${folder}.pc" @ONLY)
  install(FILES "${made}/mrv-${folder}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
          COMPONENT toolkit)
endfunction()

set(headers "\${prefix}/${MRV_INSTALLED_HEADERS}")
set(flags "-I${headers} -I${headers}/platform/host -I${headers}/platform/moravin")
foreach(folder IN LISTS MRV_HOST_SDK_FOLDERS)
  string(APPEND flags " -isystem \"${folder}\"")
endforeach()
mrv_install_headers("${MRV_ROOT}/platform" platform)
mrv_install_headers("${MRV_HOST_HEADERS}" platform/host)
mrv_install_headers("${MRV_ROOT}/platform/moravin/MoravinClient" platform/moravin/MoravinClient)
if(NOT APPLE)
  string(APPEND flags " -isystem ${headers}/platform/macos")
  install(DIRECTORY "${MRV_ROOT}/platform/macos" DESTINATION "${MRV_INSTALLED_HEADERS}/platform"
          COMPONENT toolkit FILES_MATCHING PATTERN "*.h")
endif()
mrv_install_pkg_config(platform "the platform's and the host's interfaces" "${flags}" "" "")

set(targets mrv_platform)
foreach(folder IN LISTS MRV_SYSTEM_FOLDERS)
  list(APPEND targets mrv_${folder})
  mrv_install_headers("${MRV_ROOT}/${folder}" ${folder})
  get_target_property(libraries mrv_${folder} MRV_LIBRARIES)
  set(linked "-L\${prefix}/${CMAKE_INSTALL_LIBDIR} -lmrv_${folder}")
  if(APPLE)
    get_target_property(frameworks mrv_${folder} MRV_FRAMEWORKS)
    foreach(framework IN LISTS frameworks)
      string(APPEND linked " -framework ${framework}")
    endforeach()
  endif()
  mrv_install_pkg_config(${folder} "its folder ${folder}" "-I${headers}" "${linked}"
                         "${libraries}")
endforeach()

install(TARGETS ${targets} EXPORT MrvTargets
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT toolkit)
install(EXPORT MrvTargets NAMESPACE mrv:: DESTINATION "${config_folder}" COMPONENT toolkit)
list(JOIN MRV_SYSTEM_FOLDERS " " components)
configure_file("${templates}/MrvConfig.cmake.in" "${made}/MrvConfig.cmake" @ONLY)
write_basic_package_version_file("${made}/MrvConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${made}/MrvConfig.cmake" "${made}/MrvConfigVersion.cmake"
        DESTINATION "${config_folder}" COMPONENT toolkit)
