# The plug-in is tested in two ways. Both need the embedded host and the companion library beside it, and each case is a
# process of its own with a defaults folder of its own.

# add_inner_test(NAME source...)
#
# Cases that call functions inside the plug-in: its object files are linked in.
function(add_inner_test name)
  add_mirror_test(${name} ${ARGN} LIBRARIES product_objects test_support)
  add_dependencies(${name} family)
endfunction()

# add_black_box_test(NAME source...)
#
# Cases that know the plug-in by its file alone. They run once for each file that is built: so.NAME.* and dylib.NAME.*
function(add_black_box_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE test_support gmock gtest gtest_main Threads::Threads)
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
    CROSSCOMPILING_EMULATOR "${run_env};--fresh-defaults")
  add_dependencies(${name} NSUserDefaults family)

  run_black_box_test(${name} so "$<TARGET_FILE:NSUserDefaults>")
  if(TARGET machorun AND TARGET macos)
    add_dependencies(${name} macos)
    run_black_box_test(${name} dylib "${macos_dir}/NSUserDefaults.dylib")
  endif()
endfunction()

# run_black_box_test(NAME PREFIX FILE): a further round of a black-box test with another file.
function(run_black_box_test name prefix file)
  gtest_discover_tests(${name}
    TEST_PREFIX "${prefix}.${name}."
    PROPERTIES ENVIRONMENT "PLUGIN_UNDER_TEST=${file}"
    NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)
endfunction()
