# What `cmake --install` lays down, in three components:
#
#   runtime       the shared libraries, for whatever program uses them
#   development   headers, the CMake package VemoRoot, vemo_root.pc, pages for authors
#   application   vemocad with its modules and data
#
# Everything finds its neighbours by relative paths, so the installed tree may be moved as a whole.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# One folder to include from: <core/...>, <drawing/...>, ...
set(VEMO_INSTALL_HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/vemo)
set(VEMO_INSTALL_PACKAGE ${CMAKE_INSTALL_LIBDIR}/cmake/VemoRoot)
set(VEMO_INSTALL_PKGCONFIG ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# vemocad looks for everything of its own beside itself.
set(VEMO_INSTALL_APPLICATION lib/vemocad)

# Has a file in the installed folder FROM look for the libraries by a relative path.
function(vemo_set_install_rpath target from)
  file(RELATIVE_PATH relative /${from} /${CMAKE_INSTALL_LIBDIR})
  string(REGEX REPLACE "/$" "" rpath "$ORIGIN/${relative}")
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "${rpath}")
endfunction()

# vemo_public_library(TARGET NAME FOLDER)
#
# A library of the kit: versioned, known as Vemo::NAME here and to those who use the package, with the
# headers below FOLDER.
function(vemo_public_library target name folder)
  add_library(Vemo::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    # The libraries stand beside each other in the build, too. A run path to be replaced at installation
    # may be padded with colons until then, and an empty entry means the working folder.
    BUILD_WITH_INSTALL_RPATH ON)
  target_compile_features(${target} INTERFACE cxx_std_20)
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${folder}>)
  vemo_set_install_rpath(${target} ${CMAKE_INSTALL_LIBDIR})
  install(TARGETS ${target} EXPORT VemoRootTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
      COMPONENT runtime NAMELINK_COMPONENT development
    INCLUDES DESTINATION ${VEMO_INSTALL_HEADERS})
  install(DIRECTORY ${folder}/ DESTINATION ${VEMO_INSTALL_HEADERS}
    COMPONENT development FILES_MATCHING PATTERN *.h)
endfunction()

# vemo_install_beside_vemocad(TARGET FOLDER)
#
# A program or module of the application, in its folder there; "." is vemocad's own.
function(vemo_install_beside_vemocad target folder)
  cmake_path(SET place NORMALIZE ${VEMO_INSTALL_APPLICATION}/${folder})
  vemo_set_install_rpath(${target} ${place})
  install(TARGETS ${target} DESTINATION ${place} COMPONENT application)
endfunction()

# vemo_install_command(NAME): a link in bin to a program beside vemocad, and its page docs/man/NAME.1.
function(vemo_install_command name)
  file(RELATIVE_PATH program /${CMAKE_INSTALL_BINDIR} /${VEMO_INSTALL_APPLICATION}/${name})
  set(link ${PROJECT_BINARY_DIR}/install/${name})
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/install)
  file(CREATE_LINK ${program} ${link} SYMBOLIC)
  install(FILES ${link} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT application)

  set(page ${PROJECT_BINARY_DIR}/install/${name}.1)
  configure_file(${PROJECT_SOURCE_DIR}/docs/man/${name}.1 ${page} @ONLY)
  vemo_compress(${page} ${page}.gz)
  install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT application)
endfunction()

# Packages hold files that are of no use to who installs elsewhere.
string(COMPARE EQUAL "${CMAKE_INSTALL_PREFIX}" /usr VEMO_FOR_PACKAGES)

# vemo_compress(FILE AS): the text as documentation is kept on Debian systems.
find_program(VEMO_GZIP gzip REQUIRED)
function(vemo_compress file as)
  execute_process(COMMAND ${VEMO_GZIP} -9nc INPUT_FILE ${file} OUTPUT_FILE ${as} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# ---- the CMake package and vemo_root.pc ----

install(EXPORT VemoRootTargets NAMESPACE Vemo::
  DESTINATION ${VEMO_INSTALL_PACKAGE} COMPONENT development)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/VemoRootConfig.cmake.in
  ${PROJECT_BINARY_DIR}/install/VemoRootConfig.cmake
  INSTALL_DESTINATION ${VEMO_INSTALL_PACKAGE}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/install/VemoRootConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/install/VemoRootConfig.cmake
  ${PROJECT_BINARY_DIR}/install/VemoRootConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/vemo_module.cmake
  ${PROJECT_SOURCE_DIR}/cmake/vemo_check_module.cmake
  ${PROJECT_SOURCE_DIR}/cmake/vemo_module_stamp.cpp
  DESTINATION ${VEMO_INSTALL_PACKAGE} COMPONENT development)

file(RELATIVE_PATH prefix_from_pc /${VEMO_INSTALL_PKGCONFIG} /)
string(REGEX REPLACE "/$" "" prefix_from_pc ${prefix_from_pc})
configure_file(${PROJECT_SOURCE_DIR}/cmake/vemo_root.pc.in
  ${PROJECT_BINARY_DIR}/install/vemo_root.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/install/vemo_root.pc
  DESTINATION ${VEMO_INSTALL_PKGCONFIG} COMPONENT development)

# ---- pages ----

set(authors_pages ${CMAKE_INSTALL_DATAROOTDIR}/doc/libvemo-root-dev)
install(FILES docs/kit.md docs/architecture.md docs/fonts.md docs/messages.md docs/guides/module.md
  docs/guides/services.md docs/guides/main-program.md docs/guides/promises.md docs/inspect.md
  DESTINATION ${authors_pages} COMPONENT development)
# Packages have it under the name that is usual there.
if(NOT VEMO_FOR_PACKAGES)
  install(FILES CHANGELOG.md DESTINATION ${authors_pages} COMPONENT development)
endif()
install(DIRECTORY tests/kit/consumer/ DESTINATION ${authors_pages}/example
  COMPONENT development USE_SOURCE_PERMISSIONS)
install(FILES docs/vemocad.md DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/vemocad
  COMPONENT application)
