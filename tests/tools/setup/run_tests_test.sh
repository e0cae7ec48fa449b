# The line that counts the tests, from a small tree of tests whose outcomes are known.

# make_tree: a checkout with the script and the CMake text that is read from standard input.
make_tree() {
    mkdir tools
    cp "$SOURCE_DIR/tools/run-tests.py" tools/
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
    run tools/run-tests.py small
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
    run tools/run-tests.py small
    expect_equal "$status" 1
    expect_equal "$(tail -n 1 out)" "1 passed, 3 failed"
}

NoTestsAtAllIsAFailure()
{
    make_tree <<<''
    run tools/run-tests.py small
    expect_equal "$status" 1
    expect_equal "$(tail -n 1 out)" "0 passed, 0 failed"
}

# Tests that tell of their cases as a test program does: program NAME STATUS CASE-LINE...
tree_of_programs() {
    cat >program <<'EOF'
#!/bin/sh
mkdir -p build/small/test-results
name=$1 status=$2
shift 2
printf '%s\n' "$@" >build/small/test-results/$name
echo "$name has said this"
exit "$status"
EOF
    chmod +x program
    sed 's|^\([a-z._]*\) \(.*\)$|add_test(NAME \1 COMMAND ./program \1 \2 WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}")|' |
        make_tree
}

EveryCaseOfAProgramIsCounted()
{
    tree_of_programs <<<'one 0 "passed one.A" "passed one.B"
two 1 "passed two.A" "failed two.B"'
    run tools/run-tests.py small
    expect_equal "$status" 1
    expect_equal "$(tail -n 1 out)" "3 passed, 1 failed"
}

OnlyWhatFailsIsShown()
{
    tree_of_programs <<<'one 0 "passed one.A" "passed one.B"
two 1 "passed two.A" "failed two.B"'
    run tools/run-tests.py small
    expect_equal "$(grep -c 'has said this' out)" 1
    expect_matches "$(cat out)" 'two has said this'
}

AProgramThatDoesNotComeToItsEndIsAFailure()
{
    tree_of_programs <<<'one 9 "passed one.A" "passed one.B"'
    run tools/run-tests.py small
    expect_equal "$status" 1
    expect_equal "$(tail -n 1 out)" "2 passed, 1 failed"
}

ACaseThatPassesOnOneFileAloneIsAFailure()
{
    tree_of_programs <<<'so.one 0 "passed so.one.A" "passed so.one.B"
dylib.one 0 "passed dylib.one.A"'
    run tools/run-tests.py small
    expect_equal "$status" 1
    expect_matches "$(cat out)" 'passed on the .so only: one.B'
    expect_equal "$(tail -n 1 out)" "3 passed, 0 failed"
}

ARunOnOneFileAloneComparesNothing()
{
    tree_of_programs <<<'so.one 0 "passed so.one.A"
dylib.one 0 "passed dylib.one.A" "passed dylib.one.B"'
    run tools/run-tests.py small --tests-regex '^so'
    expect_equal "$status" 0
    expect_equal "$(cat out)" "1 passed, 0 failed"
}
