#!/usr/bin/env bash
# sanitize.sh PRESET: the tests, among them the validator at its level for daily use on both files, under
# AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer. Status 1 for a test that fails and for anything that
# they report, which is printed at the end; what is passed over, and why, stands in cmake/sanitizers.cmake and
# tools/suppressions/lsan.mm.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
reports=$PWD/build/$preset/reports

tools/setup/configure.sh "$preset"
tools/build.sh "$preset" all

# Reports go to files, since tests and the validator look after what their processes print, or throw it away. A crash
# keeps its signal, which they expect.
rm -rf "$reports"
mkdir -p "$reports"
export ASAN_OPTIONS=detect_leaks=1:handle_segv=0:log_path=$reports/process
export UBSAN_OPTIONS=print_stacktrace=1
# Frames are several times as large.
ulimit -s 65536

# The tests of the released file's own look, of the set-up and of documents have nothing to do with memory.
status=0
tools/run-tests.py "$preset" --exclude-regex '^(binary|setup|docs)($|\.)' || status=1
if [ -n "$(ls "$reports")" ]; then
    cat "$reports"/*
    echo "$(ls "$reports" | wc -l) processes were reported"
    status=1
fi
exit "$status"
