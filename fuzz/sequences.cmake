# Sequences of legal calls, checked against models.

vemo_add_fuzzer(sequence_dispatcher
  SOURCES sequence_dispatcher.cpp sequence_dispatcher_script.cpp sequence_dispatcher_model.cpp
  LIBRARIES vemo_root_carried)
vemo_add_fuzzer(sequence_dictionary
  SOURCES sequence_dictionary.cpp sequence_dictionary_script.cpp sequence_dictionary_model.cpp
    sequence_dictionary_library.cpp
  LIBRARIES vemo_root_carried)

# Carries the units of fibers and coroutines alone, so that each run has a world of its own.
vemo_add_fuzzer(sequence_fibers
  SOURCES sequence_fibers.cpp sequence_fibers_run.cpp sequence_fibers_operations.cpp
    sequence_fibers_coroutines.cpp sequence_fibers_checks.cpp sequence_fibers_end.cpp
    sequence_fibers_model.cpp sequence_fibers_world.cpp
    ${PROJECT_SOURCE_DIR}/source/core/root/sicorout.cpp
  LIBRARIES vemodrawing)
target_include_directories(fuzz_sequence_fibers PRIVATE
  ${PROJECT_SOURCE_DIR}/include
  ${PROJECT_SOURCE_DIR}/source/core/root
  $<TARGET_PROPERTY:vemoutils,INTERFACE_INCLUDE_DIRECTORIES>)
if(NOT VEMO_FUZZ)
  set_tests_properties(fuzz_replay_sequence_fibers PROPERTIES LABELS threads)
endif()
