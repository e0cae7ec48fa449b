#!/usr/bin/env bash
# configure.sh PRESET: configures a build tree that is not there yet, was made for another sysroot, or came along when a
# checkout was copied or moved and would build the original's sources; a tree that is up to date is left to its own
# build system.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/common.sh"
cd "$here/../.."
preset=$1
tree=build/$preset

sources_of_tree() {
    sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$tree/CMakeCache.txt" 2>/dev/null || true
}

if [ -f "$tree/build.ninja" ] && [ "$(sources_of_tree)" = "$PWD" ] &&
    [ "$(cat "$tree/sysroot-path" 2>/dev/null)" = "$("$here/sysroot.sh" --path)" ]; then
    exit 0
fi
# What was built for other sources must not pass for this tree's own.
[ ! -d "$tree" ] || [ "$(sources_of_tree)" = "$PWD" ] || rm -rf "$tree"
mkdir -p build
log=build/configure-$preset.log
echo "configuring $tree"
cmake --fresh --preset "$preset" >"$log" 2>&1 </dev/null || {
    cat "$log" >&2
    die "cmake could not configure $tree"
}
