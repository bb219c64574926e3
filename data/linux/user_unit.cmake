# Writes the unit by which systemd's user manager starts `program`, as it will be found, to `file`.
function(write_user_unit program file)
  # The quoting of systemd.service(5), in which a percent sign begins a specifier. (CMake installs
  # nothing in a folder with a backslash.)
  string(REPLACE "\"" "\\\"" command "${program}")
  string(REPLACE "%" "%%" command "${command}")
  set(command "\"${command}\"")
  # The program's own path may have no quotes, but an argument may. There a dollar begins a variable.
  if(program MATCHES "[\"']")
    string(REPLACE "$" "$$" command "${command}")
    string(PREPEND command "/usr/bin/env ")
  endif()
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/lumowatt.service.in "${file}"
    @ONLY NO_SOURCE_PERMISSIONS)
endfunction()
