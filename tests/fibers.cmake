# Fibers and coroutines need nothing of the library but their own units; the coroutine test brings a
# service dictionary, so that no application has to be booted.
set(fiber_source ${PROJECT_SOURCE_DIR}/source/core/root/vemo_fiber.cpp)
set(coroutine_source ${PROJECT_SOURCE_DIR}/source/core/root/sicorout.cpp)
vemo_count_lines_of(${fiber_source} ${coroutine_source})

vemo_add_test(fiber_test
  SOURCES fiber_test.cpp fiber_wakeup_test.cpp fiber_stress_test.cpp ${fiber_source}
  LIBRARIES vemodrawing
  LABELS threads)
vemo_add_test(coroutine_test
  SOURCES coroutine_test.cpp ${fiber_source} ${coroutine_source}
  LIBRARIES vemodrawing
  LABELS threads)

foreach(test fiber_test coroutine_test)
  target_include_directories(${test} PRIVATE
    ${PROJECT_SOURCE_DIR}/include
    ${PROJECT_SOURCE_DIR}/source/core/root
    $<TARGET_PROPERTY:vemoutils,INTERFACE_INCLUDE_DIRECTORIES>)
endforeach()
