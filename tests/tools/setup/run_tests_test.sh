# The line that counts the tests, from a small tree of tests whose outcomes are known.

# make_tree: a checkout with the script and the CMake text that is read from standard input.
make_tree() {
    mkdir tools
    cp "$SOURCE_DIR/tools/run-tests.sh" tools/
    { printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(small LANGUAGES NONE)' 'enable_testing()' && cat; } \
        >CMakeLists.txt
    cat >CMakePresets.json <<'EOF'
{
  "version": 5,
  "configurePresets": [ { "name": "small", "generator": "Ninja", "binaryDir": "${sourceDir}/build/small" } ],
  "testPresets": [ { "name": "small", "configurePreset": "small", "execution": { "noTestsAction": "error" } } ]
}
EOF
    cmake --preset small >/dev/null
}

LastLineCountsThePassed()
{
    make_tree <<<'add_test(NAME a COMMAND true)
add_test(NAME b COMMAND true)'
    run tools/run-tests.sh small
    expect_equal "$status" 0
    expect_equal "$(tail -n 1 out)" "2 passed, 0 failed"
}

FailedAndMissingTestsAreCountedAsFailed()
{
    make_tree <<<'add_test(NAME a COMMAND true)
add_test(NAME b COMMAND false)
add_test(NAME c COMMAND ./no-such-program)
add_test(NAME d COMMAND true)
set_tests_properties(d PROPERTIES DISABLED TRUE)'
    run tools/run-tests.sh small
    expect_equal "$status" 1
    expect_equal "$(tail -n 1 out)" "1 passed, 3 failed"
}

NoTestsAtAllIsAFailure()
{
    make_tree <<<''
    run tools/run-tests.sh small
    expect_equal "$status" 1
    expect_equal "$(tail -n 1 out)" "0 passed, 0 failed"
}
