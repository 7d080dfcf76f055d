# Who may include what: cmake -D ROOT=<checkout> -P include_rules.cmake
#
# A file includes the language's headers, POSIX, files beside it, and the neighbours that its folder
# is allowed. Of the drawing runtime everybody outside its folder includes one header.
cmake_minimum_required(VERSION 3.25)

# Headers of the C library and of POSIX; those of C++ are told by having no extension.
set(system_headers
  "dirent|dlfcn|elf|fcntl|fnmatch|getopt|glob|langinfo|link|locale|poll|pthread|pwd|sched|semaphore|signal|strings|termios|unistd|wchar|wctype")
set(system_pattern "^<([a-z_]+|(${system_headers})\\.h|sys/[a-z]+\\.h)>$")

set(failures "")
set(drawing_door "^<drawing/runtime\\.h>$")

# Each #include of the file, as it stands between the brackets, in `includes`.
macro(read_includes file)
  file(STRINGS ${file} lines REGEX "^[ \t]*#[ \t]*include")
  set(includes "")
  foreach(line ${lines})
    string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*([<\"][^>\"]*[>\"]).*" "\\1" include "${line}")
    list(APPEND includes "${include}")
  endforeach()
endmacro()

macro(fail file include)
  string(REPLACE "${ROOT}/" "" shown ${file})
  string(APPEND failures "  ${shown} includes ${include}\n")
endmacro()

# Checks every source below the folder: beyond the system's headers it includes what fits the pattern
# and, in quotes, what stands beside it or in one of the further folders.
function(check_folder folder allowed)
  file(GLOB_RECURSE files ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.cpp)
  if(NOT files)
    message(FATAL_ERROR "No sources in ${folder}")
  endif()
  foreach(file ${files})
    get_filename_component(beside ${file} DIRECTORY)
    read_includes(${file})
    foreach(include ${includes})
      string(REGEX REPLACE "[<>\"]" "" name ${include})
      if(include MATCHES "^\"[^.]" AND EXISTS ${beside}/${name})
        continue()
      endif()
      if(NOT include MATCHES "${system_pattern}" AND NOT include MATCHES "${allowed}")
        fail(${file} ${include})
      endif()
    endforeach()
  endforeach()
  set(failures "${failures}" PARENT_SCOPE)
endfunction()

# The runtime's other headers are nobody's but its own.
function(check_drawing_door folder)
  file(GLOB_RECURSE files ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.cpp)
  foreach(file ${files})
    read_includes(${file})
    foreach(include ${includes})
      if(include MATCHES "^[<\"]drawing/" AND NOT include MATCHES "${drawing_door}")
        fail(${file} ${include})
      endif()
    endforeach()
  endforeach()
  set(failures "${failures}" PARENT_SCOPE)
endfunction()

foreach(part include source)
  check_folder(platform/mempool/${part} "^[<\"]mempool/")
  # What tells whether references have to be counted by atomic operations is the C library's own.
  check_folder(platform/drawing/${part} "^[<\"]drawing/|^<sys/single_threaded\\.h>$")
  check_folder(platform/global/${part} "^<drawing/runtime\\.h>$|^[<\"]global/")
  check_folder(platform/utils/${part} "^<drawing/runtime\\.h>$|^<global/|^<rapidjson/|^[<\"]utils/")
endforeach()
check_folder(include/core "^<drawing/runtime\\.h>$|^<utils/|^\"core/")
check_folder(source/core/root "^<drawing/runtime\\.h>$|^<(utils|global|mempool)/|^\"core/")

foreach(folder platform/mempool platform/global platform/utils include source app tests tools bench fuzz)
  check_drawing_door(${folder})
endforeach()

if(failures)
  message(FATAL_ERROR "Includes that the layering doesn't allow:\n${failures}")
endif()
