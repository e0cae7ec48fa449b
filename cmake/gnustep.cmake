# `gnustep`: AppKit, Foundation and the Objective-C runtime of the sysroot, in the order they must be searched.
add_library(gnustep INTERFACE)
target_link_libraries(gnustep INTERFACE gnustep-gui gnustep-base objc)

# Foundation's configuration with its paths moved into the sysroot. The mode matters: Foundation ignores a file that
# others may write, whatever the umask of the one who built it.
file(STRINGS "${CMAKE_SYSROOT}/etc/GNUstep/GNUstep.conf" lines REGEX "^[A-Z]")
list(TRANSFORM lines REPLACE "=/usr" "=${CMAKE_SYSROOT}/usr")
list(JOIN lines "\n" gnustep_config)
set(gnustep_config_file "${PROJECT_BINARY_DIR}/GNUstep.conf")
file(CONFIGURE OUTPUT "${gnustep_config_file}" CONTENT "${gnustep_config}\n" @ONLY)
file(CHMOD "${gnustep_config_file}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

set(gconv_path "${CMAKE_SYSROOT}/usr/lib/i386-linux-gnu/gconv")
configure_file(cmake/ground.h.in "${PROJECT_BINARY_DIR}/generated/ground.h" @ONLY)

# The same for shells: run-env COMMAND... runs a command with that environment.
configure_file(tools/setup/run-env.in "${PROJECT_BINARY_DIR}/run-env" @ONLY
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(run_env "${PROJECT_BINARY_DIR}/run-env")
