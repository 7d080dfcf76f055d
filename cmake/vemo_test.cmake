if(VEMO_BUILD_TESTS)
  include(cmake/vemo_googletest.cmake)
  include(GoogleTest)
endif()

# A test that starts built programs puts these words in front of them: the emulator, where the programs
# are for another machine, and otherwise none.
string(JOIN " " emulator ${CMAKE_CROSSCOMPILING_EMULATOR})
set(VEMO_TEST_ENVIRONMENT "VEMO_TEST_EMULATOR=${emulator}")

# vemo_add_test(NAME [SOURCES file...] [LIBRARIES target...] [LABELS label...] [NATIVE_ONLY test...])
#
# One GoogleTest program. ctest runs each of its tests in a process of its own, since the library has
# one life per process. The sanitizers' settings come from the test presets. The tests NATIVE_ONLY are
# left out, with a message, where the programs run under an emulator.
function(vemo_add_test name)
  if(NOT VEMO_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;LABELS;NATIVE_ONLY")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE vemo_options ${arg_LIBRARIES} GTest::gtest_main GTest::gmock)
  # Half the compiler's time; what is tested is built as it is shipped.
  target_compile_options(${name} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-O1> -g1)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  set(filter "")
  if(CMAKE_CROSSCOMPILING AND arg_NATIVE_ONLY)
    list(JOIN arg_NATIVE_ONLY ":" left_out)
    message(STATUS "${name} leaves out ${left_out}")
    set(filter TEST_FILTER "-${left_out}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 ${filter}
    PROPERTIES TIMEOUT 300 ENVIRONMENT "${VEMO_TEST_ENVIRONMENT}" LABELS "${arg_LABELS}")
endfunction()

# vemo_add_script_test(NAME COMMAND...)
#
# A test that is a script.
function(vemo_add_script_test name)
  add_test(NAME ${name} COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "${VEMO_TEST_ENVIRONMENT}")
endfunction()
