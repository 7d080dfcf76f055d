# GoogleTest as the targets GTest::gtest_main and GTest::gmock: the packaged libraries, or for another
# machine the packaged sources, built here.
if(NOT CMAKE_CROSSCOMPILING)
  find_package(GTest REQUIRED)
  return()
endif()

find_path(VEMO_GOOGLETEST_SOURCE googletest/src/gtest-all.cc PATHS /usr/src/googletest
  REQUIRED NO_CMAKE_FIND_ROOT_PATH)
mark_as_advanced(VEMO_GOOGLETEST_SOURCE)
block()
  set(INSTALL_GTEST OFF)
  # A module of the tests binds to the test program's copy.
  set(CMAKE_CXX_VISIBILITY_PRESET default)
  set(CMAKE_VISIBILITY_INLINES_HIDDEN OFF)
  add_subdirectory(${VEMO_GOOGLETEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endblock()
