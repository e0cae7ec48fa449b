#!/usr/bin/env bash
# configure.sh PRESET: configures a build tree that is not there yet, or was made for another sysroot; a tree that is
# up to date is left to its own build system.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/common.sh"
cd "$here/../.."
preset=$1
tree=build/$preset

if [ -f "$tree/build.ninja" ] && [ "$(cat "$tree/sysroot-path" 2>/dev/null)" = "$("$here/sysroot.sh" --path)" ]; then
    exit 0
fi
mkdir -p build
log=build/configure-$preset.log
echo "configuring $tree"
cmake --fresh --preset "$preset" >"$log" 2>&1 </dev/null || {
    cat "$log" >&2
    die "cmake could not configure $tree"
}
