# add_python_tests(PREFIX SCRIPT...): each case of the class Cases in SCRIPT.py is a test, PREFIX.SCRIPT.CASE.
find_program(python python3 REQUIRED)
set(python_test_environment
  "PLUGHOST=${PROJECT_BINARY_DIR}/plughost" "PLUGIN=${PROJECT_BINARY_DIR}/NSUserDefaults.so" "PYTHONDONTWRITEBYTECODE=1")

function(add_python_tests prefix)
  foreach(script IN LISTS ARGN)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${script}.py)
    file(STRINGS ${script}.py cases REGEX "^    def test_")
    foreach(case IN LISTS cases)
      string(REGEX REPLACE "^    def test_([a-z0-9_]+).*" "\\1" case "${case}")
      add_test(NAME ${prefix}.${script}.${case}
        COMMAND "${python}" "${CMAKE_CURRENT_SOURCE_DIR}/${script}.py" -q Cases.test_${case})
      set_tests_properties(${prefix}.${script}.${case} PROPERTIES TIMEOUT 60 ENVIRONMENT "${python_test_environment}")
    endforeach()
  endforeach()
endfunction()
