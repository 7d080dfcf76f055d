# With VEMO_COVERAGE the folders and files that ask for it count the lines that run. The rest is built as it
# always is: what isn't counted needn't be slow.

# Without optimisation lines stay apart, and the fortified functions have nothing to go by.
set(VEMO_COUNTING_OPTIONS -O0 --coverage -fprofile-update=atomic -Wno-cpp)

if(VEMO_COVERAGE)
  # Whatever the counting objects end up in needs the runtime that writes the counts.
  add_link_options(--coverage)
endif()

# All files of this folder and of those below it.
macro(vemo_count_lines)
  if(VEMO_COVERAGE)
    add_compile_options(${VEMO_COUNTING_OPTIONS})
  endif()
endmacro()

# Files that the targets of this folder share with their own folder's.
function(vemo_count_lines_of)
  if(VEMO_COVERAGE)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS "${VEMO_COUNTING_OPTIONS}")
  endif()
endfunction()
