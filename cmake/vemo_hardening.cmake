# Protections that every built file carries; tests/hardening looks for them. The sanitizers bring their
# own, which these would get in the way of.

include(CheckPIESupported)
check_pie_supported()

target_compile_options(vemo_options INTERFACE
  -fstack-protector-strong -fstack-clash-protection
  # Without optimisation there is nothing that it could check by.
  $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
  $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
  target_compile_options(vemo_options INTERFACE -fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
  target_compile_options(vemo_options INTERFACE -mbranch-protection=standard)
endif()
target_link_options(vemo_options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
