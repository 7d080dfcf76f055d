# vemo_add_module(NAME SOURCES file... [LIBRARIES target...])
#
# One module of an application: the shared object libNAME.so in VEMO_MODULE_DIRECTORY, which the
# dynamic linker loads by name. Nothing of it is visible but its entry.
function(vemo_add_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_library(${name} MODULE ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE vemo_options vemo_root ${arg_LIBRARIES})
  set_target_properties(${name} PROPERTIES
    PREFIX lib
    SUFFIX .so
    LIBRARY_OUTPUT_DIRECTORY ${VEMO_MODULE_DIRECTORY})
endfunction()
