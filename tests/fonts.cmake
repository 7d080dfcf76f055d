# Tests of what the library reads from font files. The real fonts are those of the packages that
# scripts/setup installs.

vemo_add_test(fontreader_test
  SOURCES fontreader_test.cpp fontreader_files_test.cpp fontreader_shx_test.cpp
  LIBRARIES vemo_root_carried)
vemo_add_test(languagetags_test SOURCES languagetags_test.cpp LIBRARIES vemo_root_carried)

# ---- family names against fontconfig's ----

# The packages that scripts/setup installs; the script takes any folders.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
vemo_add_script_test(family_names_agree_with_fontconfig
  ${Python3_EXECUTABLE} ${CMAKE_CURRENT_SOURCE_DIR}/fonts/compare_fonts.py
  $<TARGET_FILE:vemo-inspect> /usr/share/fonts/truetype/dejavu /usr/share/fonts/truetype/liberation
  /usr/share/fonts/truetype/wqy)
