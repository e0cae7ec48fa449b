#!/usr/bin/env bash
# test-macos-variants.sh PRESET: the black-box tests of the macOS plug-in, at every level of optimisation and with both
# encodings of its fix-ups; `make test` runs them once, at -O2. Each round must pass as many tests as the first one.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
plugin=build/macos-i386

tools/build.sh "$preset" macos-variants
for file in NSUserDefaults.dylib NSUserDefaults.map; do
    cmp "$plugin/$file" "$plugin/O2/$file" || {
        echo "test-macos-variants.sh: two builds of the same sources differ" >&2
        exit 1
    }
done

expected=
for level in O0 O1 O2 O3; do
    for fixups in classic compressed; do
        export MACOS_LEVEL=$level MACHORUN_FIXUPS=$fixups
        status=0
        outcome=$(tools/run-tests.py "$preset" --tests-regex '^dylib\.') || status=$?
        count=$(tail -n 1 <<<"$outcome")
        echo "$level, $fixups fix-ups: $count"
        expected=${expected:-$count}
        if [ "$status" -ne 0 ] || [ "$count" != "$expected" ]; then
            echo "$outcome" >&2
            exit 1
        fi
    done
done
