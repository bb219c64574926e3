# Signs Lumowatt.app after each link. macOS registers only signed applications as login items.
# This file must be included in the folder that creates the executable: CMake allows a POST_BUILD
# command only there.
set(LUMOWATT_SIGNING_IDENTITY "-" CACHE STRING
  "The certificate in the keychain with which Lumowatt.app is signed; \"-\" signs ad hoc")
set(signature --sign ${LUMOWATT_SIGNING_IDENTITY})
if(NOT LUMOWATT_SIGNING_IDENTITY STREQUAL "-")
  list(APPEND signature --timestamp)  # notarization requires a timestamp from Apple's server
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")  # the hardened runtime blocks debuggers and sanitizers
  list(APPEND signature --options runtime)
endif()
add_custom_command(TARGET lumowatt POST_BUILD
  COMMAND codesign --force ${signature} $<TARGET_BUNDLE_DIR:lumowatt>
  COMMENT "Signing Lumowatt.app"
  VERBATIM)
