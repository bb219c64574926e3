# What ends a process in which memory went wrong, rather than let somebody use it. Only for Linux: a
# Mac's compiler and its hardened runtime bring their own.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

target_compile_options(lumowatt_options INTERFACE
  -fstack-protector-strong -fstack-clash-protection)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i.86")
  target_compile_options(lumowatt_options INTERFACE -fcf-protection=full)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
  target_compile_options(lumowatt_options INTERFACE -mbranch-protection=standard)
endif()
# It needs an optimising compiler, and knows nothing of sanitizers.
target_compile_options(lumowatt_options INTERFACE
  $<$<CONFIG:Release>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=3>)
target_link_options(lumowatt_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
