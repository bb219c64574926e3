# Toolchain file that describes a Mac. Tests generate build files with it and read them, but do not
# build.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 23)
set(CMAKE_OSX_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/declarations)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_INSTALL_NAME_TOOL /bin/false)
find_program(clang clang++ REQUIRED)
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER ${clang})
  set(CMAKE_${language}_COMPILER_WORKS TRUE)
endforeach()
