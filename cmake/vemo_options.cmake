# Compiler options of every target of the project, carried by one interface target.

find_package(Threads REQUIRED)

add_library(vemo_options INTERFACE)
target_compile_features(vemo_options INTERFACE cxx_std_20)
target_compile_options(vemo_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wformat=2 -Werror
  # Among others where a char becomes an unsigned number, which differs between machines.
  -Wsign-conversion
  # The configuration's build paths say nothing to a reader of a log or of a core file, but all to the
  # one who counts lines.
  $<$<NOT:$<BOOL:${VEMO_COVERAGE}>>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=>)
target_link_options(vemo_options INTERFACE -Wl,--as-needed)
target_link_libraries(vemo_options INTERFACE Threads::Threads)

if(VEMO_SANITIZE)
  target_compile_options(vemo_options INTERFACE
    -fsanitize=${VEMO_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer -g)
  target_link_options(vemo_options INTERFACE -fsanitize=${VEMO_SANITIZE})
  if(VEMO_FUZZ)
    target_compile_options(vemo_options INTERFACE
      -fsanitize-ignorelist=${CMAKE_SOURCE_DIR}/fuzz/sanitizers.ignore)
  endif()
else()
  # A name that nobody defines is found when a library is linked, not when it is loaded. A library calls its
  # own functions directly, which leaves fewer names to look up at start-up.
  target_link_options(vemo_options INTERFACE -Wl,-z,defs -Wl,-Bsymbolic-functions)
  include(${CMAKE_CURRENT_LIST_DIR}/vemo_hardening.cmake)
endif()
