# vemo_add_module(NAME SOURCES file... [LIBRARIES target...])
#
# One module of an application: the shared object libNAME.so, which the dynamic linker loads by name.
# Nothing of it is visible but its entry, and every name that it uses has to be defined by what it is
# linked with. A module without an entry is refused when it is built, not when it is loaded.
#
# The project and those who use its package include this same file.
function(vemo_add_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_library(${name} MODULE ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE Vemo::root ${arg_LIBRARIES})
  target_link_options(${name} PRIVATE -Wl,-z,defs)
  set_target_properties(${name} PROPERTIES
    PREFIX lib
    SUFFIX .so
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  add_custom_command(TARGET ${name} POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -D MODULE=$<TARGET_FILE:${name}> -D NM=${CMAKE_NM}
      -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/vemo_check_module.cmake)
  vemo_stamp_module(${name})
endfunction()

# Whoever includes this file has set the version of the interfaces, as MAJOR.MINOR. It is kept for
# the whole build: the functions may be called where the variable isn't seen.
if(NOT VEMO_INTERFACE_VERSION MATCHES "^[0-9]+\\.[0-9]+$")
  message(FATAL_ERROR "VEMO_INTERFACE_VERSION is \"${VEMO_INTERFACE_VERSION}\", not MAJOR.MINOR")
endif()
set_property(GLOBAL PROPERTY VEMO_INTERFACE_VERSION ${VEMO_INTERFACE_VERSION})

# vemo_stamp_module(TARGET)
#
# Puts the version of the interfaces into a module, where the dynamic linker reads it before the
# module's code runs.
function(vemo_stamp_module target)
  get_property(version GLOBAL PROPERTY VEMO_INTERFACE_VERSION)
  string(REGEX MATCH "^([0-9]+)\\.([0-9]+)$" version ${version})
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/vemo_module_stamp.cpp)
  target_compile_definitions(${target} PRIVATE
    VEMO_STAMP_MAJOR=${CMAKE_MATCH_1} VEMO_STAMP_MINOR=${CMAKE_MATCH_2})
endfunction()
