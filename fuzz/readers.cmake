# What reads files: fonts, drawings, configurations, paths.

vemo_add_fuzzer(font_reader SOURCES font_reader.cpp LIBRARIES vemo_root_carried)
vemo_add_fuzzer(shx_header SOURCES shx_header.cpp LIBRARIES vemo_root_carried)

# The text of trees isn't read by the library's face, so the target brings its own copies of the objects.
set(utils ${PROJECT_SOURCE_DIR}/platform/utils/source)
vemo_add_fuzzer(json_tree
  SOURCES json_tree.cpp ${utils}/jsonreader.cpp ${utils}/jsontreebuilder.cpp
    ${utils}/nodeblock.cpp ${utils}/jsonnumber.cpp ${utils}/jsonwriter.cpp ${utils}/utf8check.cpp
  LIBRARIES vemoutils)
target_include_directories(fuzz_json_tree PRIVATE ${utils})

file(GLOB docmgr CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/app/modules/docmgr/dxf*.cpp)
vemo_add_fuzzer(dxf
  SOURCES dxf.cpp ${docmgr} ${PROJECT_SOURCE_DIR}/app/modules/docmgr/drawingreport.cpp
    ${PROJECT_SOURCE_DIR}/app/modules/docmgr/fontresolution.cpp
  LIBRARIES vemo_app_support)
target_include_directories(fuzz_dxf PRIVATE ${PROJECT_SOURCE_DIR}/app/modules/docmgr)

vemo_add_fuzzer(path_evaluate SOURCES path_evaluate.cpp LIBRARIES vemoutils)
vemo_add_fuzzer(config_merge SOURCES config_merge.cpp LIBRARIES vemo_root_carried)
