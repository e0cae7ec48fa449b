# add_python_test(NAME SCRIPT [VARIABLE=value...]): the class Cases of SCRIPT.py as one test of CTest, with these variables
# in its environment; what became of each case is told in test-results/NAME.
find_program(python python3 REQUIRED)
set(python_cases "${CMAKE_CURRENT_LIST_DIR}/python_cases.py")

function(add_python_test name script)
  add_test(NAME ${name} COMMAND "${python}" "${python_cases}" "${CMAKE_CURRENT_SOURCE_DIR}/${script}.py"
    "${PROJECT_BINARY_DIR}/test-results/${name}")
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
    "PLUGHOST=${PROJECT_BINARY_DIR}/plughost;PLUGIN=${PROJECT_BINARY_DIR}/NSUserDefaults.so;PYTHONDONTWRITEBYTECODE=1;${ARGN}")
endfunction()

# add_python_tests(PREFIX SCRIPT...): PREFIX.SCRIPT for each.
function(add_python_tests prefix)
  foreach(script IN LISTS ARGN)
    add_python_test(${prefix}.${script} ${script})
  endforeach()
endfunction()
