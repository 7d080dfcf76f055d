# With VEMO_COVERAGE the folders that ask for it count the lines that run. The rest is built as it always is:
# what isn't counted needn't be slow.

if(VEMO_COVERAGE)
  # Whatever the counting objects end up in needs the runtime that writes the counts.
  add_link_options(--coverage)
endif()

macro(vemo_count_lines)
  if(VEMO_COVERAGE)
    # Without optimisation lines stay apart, and the fortified functions have nothing to go by.
    add_compile_options(-O0 --coverage -fprofile-update=atomic -Wno-cpp)
  endif()
endmacro()
