#!/usr/bin/env bash
# sanitize.sh PRESET: the tests, then the validator at its level for daily use, under AddressSanitizer, LeakSanitizer and
# UndefinedBehaviorSanitizer. Status 1 for anything that they report; what is passed over, and why, stands in
# cmake/sanitizers.cmake and tools/suppressions/lsan.supp.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
tree=build/$preset

tools/setup/configure.sh "$preset"
cmake --build --preset "$preset" --target all

# Slow unwinding: the libraries of the sysroot have no frame pointers, and a leak is known by who asked for the memory.
export ASAN_OPTIONS=detect_leaks=1:fast_unwind_on_malloc=0:malloc_context_size=25
export LSAN_OPTIONS=suppressions=$PWD/tools/suppressions/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1

# The tests of the released file's own look, of scripts and of documents have nothing to do with memory.
tools/run-tests.sh "$preset" --exclude-regex '^(binary|setup|docs)\.'
"$tree/plughost" validate --level 5 --plugin "$tree/NSUserDefaults.so"
