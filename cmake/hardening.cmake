# Options that terminate a process on memory corruption, before an attacker can exploit it. They are
# only for Linux. On macOS, the compiler and the hardened runtime provide similar protection.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Not every compiler supports each of these flags for each processor.
include(CheckCXXCompilerFlag)
foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection=full
    -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "lumowatt_has${flag}" has_flag)
  set(CMAKE_REQUIRED_FLAGS -Werror)
  check_cxx_compiler_flag(${flag} ${has_flag})
  unset(CMAKE_REQUIRED_FLAGS)
  if(${has_flag})
    target_compile_options(lumowatt_options INTERFACE ${flag})
  endif()
endforeach()
# _FORTIFY_SOURCE requires optimization and conflicts with sanitizers.
if(NOT LUMOWATT_SANITIZE)
  set(fortify -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  target_compile_options(lumowatt_options INTERFACE "$<$<NOT:$<CONFIG:Debug>>:${fortify}>")
endif()
target_link_options(lumowatt_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
