# Creates a missing folder and its missing parents, readable for all users. install() would apply the
# umask. Existing folders keep their permissions.
function(make_public_folder folder)
  if(EXISTS "${folder}")
    return()
  endif()
  cmake_path(GET folder PARENT_PATH parent)
  make_public_folder("${parent}")
  file(MAKE_DIRECTORY "${folder}")
  file(CHMOD "${folder}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()
