#!/usr/bin/env bash
# run.sh [MUTATION...]: shows that the validator can fail. Each mutation is a small mistake made on purpose, a patch in this
# folder; its second line names the case that must notice. Every such case passes with the plug-in as it is and fails with
# the mutation. The patches are applied to a copy of the checkout; needs a finished `make build`.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
here=tools/mutations
tree=build/linux-i386

names=("$@")
[ ${#names[@]} -gt 0 ] || names=("$here"/*.patch)
names=("${names[@]##*/}")
names=("${names[@]%.patch}")

copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
git ls-files -z | xargs -0 tar -c --ignore-failed-read 2>/dev/null | tar -x -C "$copy"
(cd "$copy" && tools/setup/configure.sh linux-i386 >/dev/null)

build() {
    cmake --build "$copy/$tree" --target NSUserDefaults >"$copy/build.log" 2>&1 || {
        cat "$copy/build.log" >&2
        exit 1
    }
}

# Runs the case with the copy's plug-in; what it said is in $copy/said.
validate() {
    "$tree/plughost" validate --plugin "$copy/$tree/NSUserDefaults.so" --only "$1" >"$copy/said" 2>&1 </dev/null
}

missed=0
build
for name in "${names[@]}"; do
    patch=$here/$name.patch
    what=$(sed -n 1p "$patch")
    case=$(sed -n 's/^Noticed by: //p' "$patch")
    if ! validate "$case"; then
        echo "$name: $case fails without the mutation, too" >&2
        cat "$copy/said" >&2
        missed=1
        continue
    fi
    patch --quiet -p1 -d "$copy" <"$patch"
    build
    if validate "$case"; then
        echo "$name: NOT NOTICED by $case. $what" >&2
        missed=1
    else
        echo "$name: noticed by $case. $what"
    fi
    patch --quiet -R -p1 -d "$copy" <"$patch"
done
exit "$missed"
