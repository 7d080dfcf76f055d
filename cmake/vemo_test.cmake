# vemo_add_test(NAME [SOURCES file...] [LIBRARIES target...] [LABELS label...])
#
# One GoogleTest program. ctest runs each of its tests in a process of its own, since the library has
# one life per process. The sanitizers' settings come from the test presets.
function(vemo_add_test name)
  if(NOT VEMO_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;LABELS")
  find_package(GTest REQUIRED)
  include(GoogleTest)
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE vemo_options ${arg_LIBRARIES} GTest::gtest_main GTest::gmock)
  # Half the compiler's time; what is tested is built as it is shipped.
  target_compile_options(${name} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-O1> -g1)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 300 LABELS "${arg_LABELS}")
endfunction()
