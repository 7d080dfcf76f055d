# The Debian packages, one a component. scripts/package makes them from the preset "package", which
# builds for /usr: there the libraries stand among the system's and need no run path.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vemo)
# Each package has a summary of its own, the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_CONTACT "Vemo project <support@vemocad.example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development application)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# dpkg-shlibdeps finds what is needed of the system. Among themselves the packages go together.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(same_libraries "libvemo-root0 (= ${debian_version})")

# What the packages say of themselves. SOURCE_DATE_EPOCH in the environment sets the date.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog ${PROJECT_BINARY_DIR}/install/changelog.Debian)
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${changelog} @ONLY)
vemo_compress(${changelog} ${changelog}.gz)
vemo_compress(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_BINARY_DIR}/install/changelog.gz)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)

# vemo_describe_package(COMPONENT PACKAGE): its copyright, changelogs and lintian overrides.
function(vemo_describe_package component package)
  if(NOT VEMO_FOR_PACKAGES)
    return()
  endif()
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright ${changelog}.gz
      ${PROJECT_BINARY_DIR}/install/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/${package}.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides
    RENAME ${package} COMPONENT ${component})
endfunction()

# ---- libvemo-root0 ----

# What other packages depend on when they use the libraries, for dpkg-shlibdeps; and the dynamic
# linker's cache is renewed once for all packages of a run.
set(series ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
math(EXPR next_minor "${PROJECT_VERSION_MINOR} + 1")
set(shlibs "")
foreach(library vemo_root vemodrawing vemoglobal vemomempool vemoutils)
  string(APPEND shlibs "lib${library} ${PROJECT_VERSION_MAJOR} libvemo-root0 (>= ${series}), "
    "libvemo-root0 (<< ${PROJECT_VERSION_MAJOR}.${next_minor})\n")
endforeach()
file(CONFIGURE OUTPUT install/shlibs CONTENT "${shlibs}")
file(CONFIGURE OUTPUT install/triggers CONTENT "activate-noawait ldconfig\n")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvemo-root0)
vemo_describe_package(runtime libvemo-root0)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/install/shlibs ${PROJECT_BINARY_DIR}/install/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
"kernel library of a drafting application: shared libraries
A program calls the library once and becomes a running drafting application:
configuration, services by name, modules loaded in order, fonts indexed.")

# ---- libvemo-root-dev ----

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvemo-root-dev)
vemo_describe_package(development libvemo-root-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_libraries}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkg-config")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"kernel library of a drafting application: development files
What is needed to write a main program or modules on the library: headers, the
CMake package VemoRoot, vemo_root.pc, pages for authors and an example.")

# ---- vemocad ----

set(CPACK_DEBIAN_APPLICATION_PACKAGE_NAME vemocad)
vemo_describe_package(application vemocad)
set(CPACK_DEBIAN_APPLICATION_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_APPLICATION_PACKAGE_DEPENDS "${same_libraries}")
# The substitute for TrueType fonts, as shipped.
set(CPACK_DEBIAN_APPLICATION_PACKAGE_RECOMMENDS fonts-dejavu-core)
set(CPACK_COMPONENT_APPLICATION_DESCRIPTION
"reference drafting application for the command line
Reads ASCII DXF drawings and reports what is in them and which files serve
their fonts. Commands come from the terminal or from a pipe.")

include(CPack)
