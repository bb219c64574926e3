# Writes a systemd user unit that starts `program`, an absolute path, into `file`.
function(write_user_unit program file)
  # Quotes the path as systemd.service(5) requires. A percent sign begins a specifier. CMake cannot
  # install into a folder with a backslash.
  string(REPLACE "\"" "\\\"" command "${program}")
  string(REPLACE "%" "%%" command "${command}")
  set(command "\"${command}\"")
  # systemd rejects quotes in the path of the program but not in an argument, so env starts a program
  # with quotes. In an argument, a dollar sign begins a variable.
  if(program MATCHES "[\"']")
    string(REPLACE "$" "$$" command "${command}")
    string(PREPEND command "/usr/bin/env ")
  endif()
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/lumowatt.service.in "${file}"
    @ONLY NO_SOURCE_PERMISSIONS)
endfunction()
