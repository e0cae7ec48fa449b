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
echo "$((tests - not_passed)) passed, $not_passed failed"
[ "$ctest_status" -eq 0 ] && [ "$tests" -gt 0 ] && [ "$not_passed" -eq 0 ]
