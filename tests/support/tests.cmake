# Programs and libraries of tests share their precompiled headers, so both are compiled as libraries are.
function(compile_alike target)
  do_not_optimise(${target})
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  target_compile_options(${target} PRIVATE -fPIC)
endfunction()

# What the files of test programs include, compiled once for all of them.
file(TOUCH "${CMAKE_CURRENT_BINARY_DIR}/nothing.cpp" "${CMAKE_CURRENT_BINARY_DIR}/nothing.mm")
add_library(test_headers OBJECT EXCLUDE_FROM_ALL
  "${CMAKE_CURRENT_BINARY_DIR}/nothing.cpp" "${CMAKE_CURRENT_BINARY_DIR}/nothing.mm")
compile_alike(test_headers)
target_precompile_headers(test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h> ${common_headers}
  "$<$<COMPILE_LANGUAGE:OBJCXX>:<Foundation/Foundation.h$<ANGLE-R>>")

# compile_as_test(TARGET)
function(compile_as_test target)
  compile_alike(${target})
  target_precompile_headers(${target} REUSE_FROM test_headers)
endfunction()

# add_test_program(NAME source... [MAIN library] [LIBRARIES library...])
#
# A program of tests. Its main function runs every case in a process and with a defaults folder of the case's own
# (tests/support/runner/runner.h), and says what is started before: Cocoa with cocoa_test_main, which is taken where none
# is named, nothing with plain_test_main.
function(add_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 test "" "MAIN" "LIBRARIES")
  if(NOT test_MAIN)
    set(test_MAIN cocoa_test_main)
  endif()
  add_executable(${name} ${test_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${test_MAIN} ${test_LIBRARIES})
  compile_as_test(${name})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")
endfunction()

# add_test_run(NAME TARGET [VARIABLE=value...])
#
# The program as one test of CTest, with these variables in its environment; what became of each case is told in
# test-results/NAME. CTest runs several programs at once, so each runs one case at a time.
function(add_test_run name target)
  add_test(NAME ${name} COMMAND ${target} --jobs=1 "--results=${PROJECT_BINARY_DIR}/test-results/${name}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 3600 ENVIRONMENT "${ARGN}")
endfunction()

# add_mirror_test(NAME ...): a program, run once.
function(add_mirror_test name)
  add_test_program(${name} ${ARGN})
  add_test_run(${name} ${name})
endfunction()

# The plug-in itself is tested in two ways. Both need the embedded host and the companion library beside it.

# add_inner_test(NAME source...)
#
# Cases that call functions inside the plug-in: its object files are linked in.
function(add_inner_test name)
  add_mirror_test(${name} ${ARGN} LIBRARIES product_objects test_support)
  add_dependencies(${name} family)
endfunction()

# add_black_box_test(NAME source...)
#
# Cases that know the plug-in by its file alone, which is in memory already unless another MAIN is named. They run once
# for each file that is built: so.NAME and dylib.NAME.
function(add_black_box_test name)
  if(NOT "MAIN" IN_LIST ARGN)
    list(APPEND ARGN MAIN black_box_test_main)
  endif()
  add_test_program(${name} ${ARGN} LIBRARIES test_support)
  add_dependencies(${name} NSUserDefaults family)

  add_test_run(so.${name} ${name} "PLUGIN_UNDER_TEST=$<TARGET_FILE:NSUserDefaults>")
  if(TARGET machorun AND TARGET macos)
    add_dependencies(${name} macos)
    add_test_run(dylib.${name} ${name} "PLUGIN_UNDER_TEST=${macos_dir}/NSUserDefaults.dylib")
  endif()
endfunction()
