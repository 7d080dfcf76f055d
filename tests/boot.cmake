# Tests that boot the real shared library with small modules, and one that carries its objects.

add_library(testjournal SHARED modules/testjournal.cpp)
target_include_directories(testjournal PUBLIC modules)
target_link_libraries(testjournal PRIVATE vemo_options)
add_custom_target(boot_modules)

# One test module: a real shared object, named as modules are, in a folder of its own.
function(vemo_add_boot_module name source)
  set(target bootmodule_${name})
  add_library(${target} MODULE modules/${source})
  target_link_libraries(${target} PRIVATE vemo_root testjournal vemo_options)
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${name} LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/modules)
  add_dependencies(boot_modules ${target})
endfunction()

foreach(name stage aliases autotest remotedebug wizard raiser leftservice loader witness chatter)
  vemo_add_boot_module(${name} ${name}.cpp)
endforeach()
foreach(name alpha beta gamma)
  vemo_add_boot_module(${name} plain.cpp)
endforeach()
# A module of the drawing runtime's kind, whose file name follows no rule.
vemo_add_boot_module(runtime plain.cpp)
set_target_properties(bootmodule_runtime PROPERTIES PREFIX "" SUFFIX ".tx")

# In a folder that one test alone names to the linker.
vemo_add_boot_module(RecomputeDimBlock witness.cpp)
set_target_properties(bootmodule_RecomputeDimBlock PROPERTIES
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests/modules/drawing)

file(GLOB boot_tests CONFIGURE_DEPENDS boot_*_test.cpp)
list(FILTER boot_tests EXCLUDE REGEX "boot_carried_.*")
vemo_add_test(boot_test SOURCES ${boot_tests} boot_support.cpp
  LIBRARIES vemo_root testjournal vemo_rapidjson ${CMAKE_DL_LIBS})
add_dependencies(boot_test boot_modules)

file(GLOB carried_tests CONFIGURE_DEPENDS boot_carried_*_test.cpp)
vemo_add_test(boot_carried_test SOURCES ${carried_tests} boot_support.cpp
  LIBRARIES vemo_root_carried testjournal ${CMAKE_DL_LIBS})
add_dependencies(boot_carried_test boot_modules)

# The calls that fail stand in front of the system's in these programs alone.
vemo_add_test(faults_test
  SOURCES faults/life_faults_test.cpp faults/interrupted_saves_test.cpp faults/faults.cpp
    boot_support.cpp
  LIBRARIES vemo_root vemomempool testjournal ${CMAKE_DL_LIBS})
target_include_directories(faults_test PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
add_dependencies(faults_test boot_modules)
