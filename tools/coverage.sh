#!/usr/bin/env bash
# coverage.sh PRESET: builds and runs the tests with a plug-in that counts the branches taken (on the Linux file: the
# macOS one is made of the same sources). Prints a table of the plug-in's sources, then every branch that no test took in
# one of its directions.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
tree=$PWD/build/$preset

tools/setup/configure.sh "$preset"
tools/build.sh "$preset" all
rm -rf "$tree/counts"
mkdir -p "$tree/counts"
# One file for each of four processes at a time, added to by all that follow. Left out are the tests of the released file's
# own look, which would find the counters in it, those of the macOS file and the validator, whose processes end without
# writing any counts, and those of the set-up and of documents.
log=$tree/tests.log
LLVM_PROFILE_FILE=$tree/counts/%4m.profraw tools/run-tests.py "$preset" --exclude-regex '^((binary|dylib|docs|setup)($|\.)|so\.validate$)' >"$log" || {
    cat "$log" >&2
    exit 1
}
tail -n 1 "$log"
tools/coverage-report.sh "$tree/counts" "$tree/NSUserDefaults.so"
