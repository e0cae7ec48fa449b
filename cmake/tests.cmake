# add_mirror_test(NAME source... [LIBRARIES library...])
#
# One test program for one folder of the tree under tests/. Every case is a process of its own, because the plug-in
# remembers entry points for the life of a process, and gets a temporary defaults folder that nobody else has.
include(GoogleTest)

function(add_mirror_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "" "" "LIBRARIES")
  add_executable(${name} ${test_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${test_LIBRARIES} gmock gtest gtest_main Threads::Threads)
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
    CROSSCOMPILING_EMULATOR "${run_env};--fresh-defaults")
  gtest_discover_tests(${name} TEST_PREFIX "${name}." NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)
endfunction()
