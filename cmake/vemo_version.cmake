# The version stands twice: in project() and, for those who compile against the library, in a header.
# Configuring stops when they differ, and a change of the header configures anew.
set(version_header ${PROJECT_SOURCE_DIR}/include/core/vemoversion.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${version_header})

file(READ ${version_header} version_text)
foreach(part MAJOR MINOR PATCH)
  if(NOT version_text MATCHES "#define VEMO_VERSION_${part} ${PROJECT_VERSION_${part}}\n")
    message(FATAL_ERROR
      "VEMO_VERSION_${part} in ${version_header} is not ${PROJECT_VERSION_${part}}, as project() says")
  endif()
endforeach()
