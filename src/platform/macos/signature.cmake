# Signs Lumowatt.app after each link: the system lets only signed applications open at login. Included
# where the executable is created, because CMake allows commands after its link only there.
set(LUMOWATT_SIGNING_IDENTITY "-" CACHE STRING
  "The certificate in the keychain with which Lumowatt.app is signed; \"-\" signs ad hoc")
set(signature --sign ${LUMOWATT_SIGNING_IDENTITY})
if(NOT LUMOWATT_SIGNING_IDENTITY STREQUAL "-")
  list(APPEND signature --timestamp)  # notarization requires one from Apple's server
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")  # the hardened runtime refuses debuggers and sanitizers
  list(APPEND signature --options runtime)
endif()
add_custom_command(TARGET lumowatt POST_BUILD
  COMMAND codesign --force ${signature} $<TARGET_BUNDLE_DIR:lumowatt>
  COMMENT "Signing Lumowatt.app"
  VERBATIM)
