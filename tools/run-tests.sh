#!/usr/bin/env bash
# run-tests.sh PRESET [CTEST-OPTION...]: runs the tests of a build tree; the last line says how many passed and failed.
# A test that did not run counts as failed, and so does a run without tests.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
preset=$1
shift
results=build/$preset/test-results.xml

rm -f "$results"
ctest --preset "$preset" --output-junit "$PWD/$results" "$@" </dev/null
ctest_status=$?

# The opening tag of the results spreads over several lines: <testsuite name="…" tests="3" failures="0" disabled="0" …
count() {
    sed -n '/<testsuite /,/>/p' "$results" 2>/dev/null | grep -o "$1=\"[0-9]*\"" | head -n 1 | tr -cd '0-9'
}
tests=$(count tests)
not_passed=$(($(count failures) + $(count disabled) + $(count skipped)))
tests=${tests:-0}

# The black-box tests run once on each file of the plug-in, under the same names. Cases that passed on one alone are a
# difference between the two, and a failure even when every case that ran has passed.
passed_on() {
    sed -n "s/.*<testcase name=\"$1\.\([^\"]*\)\".* status=\"run\".*/\1/p" "$results" 2>/dev/null | sort
}
on_so=$(passed_on so)
on_dylib=$(passed_on dylib)
same_on_both=true
if [ -n "$on_so" ] && [ -n "$on_dylib" ]; then # a run of chosen tests may be about one file alone
    echo "black-box tests: $(grep -c . <<<"$on_so") passed on the .so, $(grep -c . <<<"$on_dylib") on the dylib"
    [ "$on_so" = "$on_dylib" ] || {
        same_on_both=false
        echo "passed on one file only:"
        diff <(echo "$on_so") <(echo "$on_dylib") | sed -n 's/^< /    .so   /p; s/^> /    dylib /p'
    }
fi
echo "$((tests - not_passed)) passed, $not_passed failed"
[ "$ctest_status" -eq 0 ] && [ "$tests" -gt 0 ] && [ "$not_passed" -eq 0 ] && $same_on_both
