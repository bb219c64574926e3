# Makes of what was installed for the package what Debian's policy asks for, and finds out what the
# package depends on. Run by CPack.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(folder ${CPACK_TEMPORARY_DIRECTORY})
set(usr ${folder}/usr)
set(documents ${usr}/share/doc/lumowatt)

function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  set(output ${output} PARENT_SCOPE)
endfunction()

file(REMOVE ${documents}/LICENSE)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright ${CMAKE_CURRENT_LIST_DIR}/changelog
  DESTINATION ${documents})
run(gzip --best --no-name ${documents}/changelog ${usr}/share/man/man1/lumowatt.1)
file(RENAME ${usr}/share/zsh/site-functions ${usr}/share/zsh/vendor-completions)

# Where packages have it, and with the path that the package is installed to.
include(${CMAKE_CURRENT_LIST_DIR}/../user_unit.cmake)
file(REMOVE_RECURSE ${usr}/share/systemd)
write_user_unit(/usr/bin/lumowatt ${usr}/lib/systemd/user/lumowatt.service)

# For everybody, whoever makes it.
set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(executable ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
file(CHMOD_RECURSE ${usr} FILE_PERMISSIONS ${readable} DIRECTORY_PERMISSIONS ${executable})
file(CHMOD ${usr}/bin/lumowatt PERMISSIONS ${executable})

# The executable must find its libraries; what a module lacks is missed only when it is wanted.
file(MAKE_DIRECTORY ${folder}/DEBIAN)  # by which it knows the root of a package
file(WRITE ${folder}/debian/control "Source: lumowatt\n\nPackage: lumowatt\nArchitecture: any\n")
execute_process(
  COMMAND dpkg-shlibdeps -O
    -dDepends ${usr}/bin/lumowatt
    -dRecommends ${usr}/lib/lumowatt/lumowatt-desktop.so ${usr}/lib/lumowatt/lumowatt-drawing.so
  WORKING_DIRECTORY ${folder}
  OUTPUT_VARIABLE libraries
  COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE ${folder}/DEBIAN ${folder}/debian)
string(REGEX MATCH "shlibs:Depends=([^\n]*)" found "${libraries}")
set(CPACK_DEBIAN_PACKAGE_DEPENDS ${CMAKE_MATCH_1})
string(REGEX MATCH "shlibs:Recommends=([^\n]*)" found "${libraries}")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "${CMAKE_MATCH_1}, default-dbus-session-bus | dbus-session-bus, \
fonts-inter | fonts-cantarell | fonts-noto-core | fonts-roboto-unhinted, \
wl-clipboard | xclip, xdg-utils")
