# Does a module export what the application looks for? cmake -D MODULE=FILE -D NM=PROGRAM -P ...
cmake_minimum_required(VERSION 3.25)

# ODRX_MODULE_ENTRY_NAME of the drawing runtime.
set(entry odrxCreateModuleObject)

# The function is among the file's symbols, of the kinds that nm is asked for.
function(has_symbol found name)
  execute_process(COMMAND ${NM} ${ARGN} ${MODULE}
    OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "[0-9a-f]+ [TtWw] ${name}(@[^\n]*)?(\n|$)" match "${symbols}")
  set(${found} "${match}" PARENT_SCOPE)
endfunction()

cmake_path(GET MODULE FILENAME file)
has_symbol(exported ${entry} --dynamic --defined-only)
if(NOT exported)
  has_symbol(hidden ${entry} --defined-only)
  if(hidden)
    set(reason "${entry} is there but hidden: a version script or another link option takes it for a \
local function.")
  else()
    set(reason "No source of it says ODRX_DEFINE_DYNAMIC_MODULE(Class).")
  endif()
  message(FATAL_ERROR "${file} exports no ${entry}, so no application can load it as a module.\n"
    "${reason}")
endif()
