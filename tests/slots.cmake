# Tests that hold the library's binary interfaces: places in virtual tables, exported symbols, and
# what a header may include.

# ---- calls by position ----

# The module sees the drawing runtime's headers and none of the library's. Its checks assert with the
# test program's copy of GoogleTest, whose symbols stay open until the program loads the module.
file(GLOB slot_sources CONFIGURE_DEPENDS modules/slot*.cpp)
list(FILTER slot_sources EXCLUDE REGEX "/slotbinding\\.cpp$")
add_library(slotmodule MODULE ${slot_sources})
target_link_libraries(slotmodule PRIVATE
  vemo_options vemodrawing testjournal $<TARGET_FILE:vemo_root> -Wl,-z,undefs)
add_dependencies(slotmodule vemo_root)
set_target_properties(slotmodule PROPERTIES
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/modules)

vemo_add_test(slots_test SOURCES slots_test.cpp boot_support.cpp
  LIBRARIES vemo_root testjournal ${CMAKE_DL_LIBS})
set_target_properties(slots_test PROPERTIES ENABLE_EXPORTS ON)
target_compile_definitions(slots_test PRIVATE VEMO_SLOT_MODULE="$<TARGET_FILE:slotmodule>")
add_dependencies(slots_test slotmodule)

# ---- exported symbols ----

vemo_add_test(exports_test SOURCES exports_test.cpp)
target_compile_definitions(exports_test PRIVATE VEMO_ROOT_LIBRARY="$<TARGET_FILE:vemo_root>")
add_dependencies(exports_test vemo_root)

# ---- a program that carries the library ----

vemo_add_boot_module(binding slotbinding.cpp)
file(GLOB carried_tests CONFIGURE_DEPENDS carried_*_test.cpp)
vemo_add_test(carried_test SOURCES ${carried_tests} boot_support.cpp
  LIBRARIES vemo_root_carried testjournal ${CMAKE_DL_LIBS})
target_compile_definitions(carried_test PRIVATE
  VEMO_BINDING_MODULE="$<TARGET_FILE:bootmodule_binding>")
add_dependencies(carried_test bootmodule_binding)

# ---- headers ----

# Each public header compiles alone, and twice. The target gives what the header may need.
function(vemo_check_headers name folder target)
  file(GLOB headers RELATIVE ${folder} CONFIGURE_DEPENDS ${folder}/${name}/*.h)
  foreach(header ${headers})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/headers/${header}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include <@header@>\n#include <@header@>\n" @ONLY)
    list(APPEND sources ${source})
  endforeach()
  add_library(headers_${name} OBJECT ${sources})
  target_link_libraries(headers_${name} PRIVATE ${target} vemo_options)
endfunction()

vemo_check_headers(core ${PROJECT_SOURCE_DIR}/include vemo_root)
foreach(library mempool drawing global utils)
  vemo_check_headers(${library} ${PROJECT_SOURCE_DIR}/platform/${library}/include vemo${library})
endforeach()

add_test(NAME include_rules
  COMMAND ${CMAKE_COMMAND} -D ROOT=${PROJECT_SOURCE_DIR} -P ${CMAKE_CURRENT_SOURCE_DIR}/headers/include_rules.cmake)
