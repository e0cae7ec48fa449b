# The plug-in is tested in two ways. Both need the embedded host and the companion library beside it.

# add_inner_test(NAME source...)
#
# Cases that call functions inside the plug-in: its object files are linked in.
function(add_inner_test name)
  add_mirror_test(${name} ${ARGN} LIBRARIES product_objects test_support)
  add_dependencies(${name} family)
endfunction()

# add_black_box_test(NAME source...)
#
# Cases that know the plug-in by its file alone. They run once for each file that is built: so.NAME and dylib.NAME.
function(add_black_box_test name)
  add_test_program(${name} ${ARGN} LIBRARIES test_support)
  add_dependencies(${name} NSUserDefaults family)

  add_test_run(so.${name} ${name} ENVIRONMENT "PLUGIN_UNDER_TEST=$<TARGET_FILE:NSUserDefaults>")
  if(TARGET machorun AND TARGET macos)
    add_dependencies(${name} macos)
    add_test_run(dylib.${name} ${name} ENVIRONMENT "PLUGIN_UNDER_TEST=${macos_dir}/NSUserDefaults.dylib")
  endif()
endfunction()
