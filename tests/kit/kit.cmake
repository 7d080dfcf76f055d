# The installed kit, as those have it who never see this tree. A sanitizer's libraries are no kit for
# anybody, so those builds don't have the test. With a toolchain file it goes for the kit's users too.
if(NOT VEMO_SANITIZE)
  vemo_add_script_test(kit_install_and_use
    ${CMAKE_CURRENT_LIST_DIR}/install_and_use.sh ${CMAKE_COMMAND} ${CMAKE_GENERATOR}
    ${CMAKE_CXX_COMPILER} ${PROJECT_BINARY_DIR} ${CMAKE_TOOLCHAIN_FILE})
  if(CMAKE_CROSSCOMPILING)
    message(STATUS "kit_install_and_use leaves out the guides: they start programs without an emulator")
  endif()
endif()
