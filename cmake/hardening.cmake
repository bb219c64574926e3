# What ends a process in which memory went wrong, rather than let somebody use it. Only for Linux: a
# Mac's compiler and its hardened runtime bring their own.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Compilers differ in what they know on which processor.
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
# It needs an optimising compiler, and knows nothing of sanitizers.
if(NOT LUMOWATT_SANITIZE)
  set(fortify -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  target_compile_options(lumowatt_options INTERFACE "$<$<NOT:$<CONFIG:Debug>>:${fortify}>")
endif()
target_link_options(lumowatt_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
