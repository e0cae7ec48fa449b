# add_mirror_test(NAME source... [PLAIN] [LIBRARIES library...])
#
# One test program for one folder of the tree under tests/. Its main function runs every case in a process and with a
# defaults folder of the case's own (tests/support/runner/runner.h). PLAIN programs do not start Cocoa before.
#
# add_test_run(NAME TARGET [COST n] [ENVIRONMENT NAME=value...])
#
# The program as one test of CTest; what became of each case stands in test-results/NAME. CTest has several programs at
# once, so each has its cases one by one.
function(add_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 test "PLAIN" "" "LIBRARIES")
  add_executable(${name} ${test_UNPARSED_ARGUMENTS})
  set(main cocoa_test_main)
  if(test_PLAIN)
    set(main plain_test_main)
  endif()
  target_link_libraries(${name} PRIVATE ${test_LIBRARIES} ${main})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")
endfunction()

function(add_test_run name target)
  cmake_parse_arguments(PARSE_ARGV 2 run "" "" "ENVIRONMENT")
  add_test(NAME ${name} COMMAND ${target} --jobs=1 "--results=${PROJECT_BINARY_DIR}/test-results/${name}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 3600 ENVIRONMENT "${run_ENVIRONMENT}")
endfunction()

function(add_mirror_test name)
  add_test_program(${name} ${ARGN})
  add_test_run(${name} ${name})
endfunction()
