# RapidJSON, which is headers alone, as vemo_rapidjson. A build for another machine takes it from this
# one, in a folder that shows nothing else of this machine's headers.
find_path(VEMO_RAPIDJSON_INCLUDE rapidjson/reader.h REQUIRED NO_CMAKE_FIND_ROOT_PATH)
mark_as_advanced(VEMO_RAPIDJSON_INCLUDE)

set(folder ${PROJECT_BINARY_DIR}/rapidjson)
file(MAKE_DIRECTORY ${folder})
file(CREATE_LINK ${VEMO_RAPIDJSON_INCLUDE}/rapidjson ${folder}/rapidjson SYMBOLIC)

add_library(vemo_rapidjson INTERFACE)
target_include_directories(vemo_rapidjson SYSTEM INTERFACE ${folder})
