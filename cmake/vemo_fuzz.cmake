# vemo_add_fuzzer(NAME SOURCES file... [LIBRARIES target...])
#
# One fuzz target, the program fuzz_NAME; its sources define LLVMFuzzerTestOneInput. With VEMO_FUZZ, which
# the preset "fuzz" sets, it is linked with libFuzzer, and everything of the project is instrumented for it.
# Otherwise it is linked with a driver that only feeds it files, and the test fuzz_replay_NAME feeds it
# fuzz/corpus/NAME.
function(vemo_add_fuzzer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
  add_executable(fuzz_${name} ${arg_SOURCES})
  target_include_directories(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(fuzz_${name} PRIVATE vemo_options ${arg_LIBRARIES})
  set_target_properties(fuzz_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
  if(VEMO_FUZZ)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers fuzz_${name})
  else()
    target_sources(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay.cpp)
    add_test(NAME fuzz_replay_${name}
      COMMAND fuzz_${name} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${name})
    set_tests_properties(fuzz_replay_${name} PROPERTIES TIMEOUT 300)
  endif()
endfunction()

# What the preset "fuzz" builds.
if(VEMO_FUZZ)
  add_custom_target(fuzzers)
endif()
