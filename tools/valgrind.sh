#!/usr/bin/env bash
# valgrind.sh PRESET                        the tours of the class under memcheck, on an old and on a newer host
# valgrind.sh PRESET PROGRAM ARGUMENT...    a program of the build, such as one of tests with --no-fork
#
# Status 1 for an access that is not allowed, a value that was never set, or memory that nobody refers to any more; what
# is passed over, and why, stands in tools/suppressions/valgrind.supp.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tree=$PWD/build/$1
sysroot=$(cat "$tree/sysroot-path")

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Memcheck cannot do without the symbols of the sysroot's loader. It looks for them, under the name that a library gives,
# in a copy of the folder that the library is in.
for folder in lib/i386-linux-gnu usr/lib/i386-linux-gnu; do
    mkdir -p "$scratch/debug$sysroot/$folder"
    find "$sysroot/usr/lib/debug/.build-id" -name '*.debug' -exec ln -s -t "$scratch/debug$sysroot/$folder" {} +
done

# memcheck PROGRAM ARGUMENT...: with the defaults in $defaults. The environment is prepared here, because
# plughost, which does that, executes another program.
memcheck() {
    local log=$scratch/log status=0
    "$tree/run-env" --defaults-dir "$defaults" \
        valgrind --quiet --error-exitcode=9 --leak-check=full --show-leak-kinds=definite \
        --errors-for-leak-kinds=definite --num-callers=40 --child-silent-after-fork=yes \
        --extra-debuginfo-path="$scratch/debug" --suppressions=tools/suppressions/valgrind.supp --log-file="$log" \
        "$@" >"$scratch/out" 2>&1 </dev/null || status=$?
    if [ "$status" -ne 0 ]; then
        [ "$status" -eq 9 ] || cat "$scratch/out"
        cat "$log"
        return 1
    fi
}

tour() {
    defaults=$(mktemp -d -p "$scratch")
    memcheck "$tree/plughost-cocoa" tour "$@" --defaults-dir "$defaults" --check-handles --plugin "$tree/NSUserDefaults.so" || {
        echo "tour $*: not clean" >&2
        return 1
    }
    echo "tour $*: no errors, no leaks"
}

if [ $# -gt 1 ]; then
    defaults=$(mktemp -d -p "$scratch")
    memcheck "${@:2}" && cat "$scratch/out"
    exit
fi
tour basics --host 2011.4
tour basics --host 2013.03
tour values --host 2013.03
