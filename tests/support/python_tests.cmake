# add_python_test(NAME SCRIPT [VARIABLE=value...]): the class Cases of SCRIPT.py as one test of CTest, with these variables
# in its environment; what became of each case is told in test-results/NAME.
find_program(python3 python3 REQUIRED)
# The interpreter itself: where python3 is a script that chooses one, that takes longer than many a test.
execute_process(COMMAND "${python3}" -c "import sys; print(sys.executable)"
  OUTPUT_VARIABLE python OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(python_cases "${CMAKE_CURRENT_LIST_DIR}/python_cases.py")

function(add_python_test name script)
  add_test(NAME ${name} COMMAND "${python}" "${python_cases}" "${CMAKE_CURRENT_SOURCE_DIR}/${script}.py"
    "${PROJECT_BINARY_DIR}/test-results/${name}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
    "PLUGHOST=${PROJECT_BINARY_DIR}/plughost;PLUGHOST_FORKS=${PROJECT_BINARY_DIR}/tests/host/plughost/plughost_forks;PLUGIN=${PROJECT_BINARY_DIR}/NSUserDefaults.so;PYTHONDONTWRITEBYTECODE=1;${ARGN}")
endfunction()

# add_python_tests(PREFIX SCRIPT...): PREFIX.SCRIPT for each.
function(add_python_tests prefix)
  foreach(script IN LISTS ARGN)
    add_python_test(${prefix}.${script} ${script})
  endforeach()
endfunction()
