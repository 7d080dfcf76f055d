# The installed kit, as those have it who never see this tree. A sanitizer's libraries are no kit for
# anybody, so those builds don't have the test.
if(NOT VEMO_SANITIZE)
  add_test(NAME kit_install_and_use
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/install_and_use.sh
      ${CMAKE_COMMAND} ${CMAKE_GENERATOR} ${CMAKE_CXX_COMPILER} ${PROJECT_BINARY_DIR})
  set_tests_properties(kit_install_and_use PROPERTIES TIMEOUT 600)
endif()
