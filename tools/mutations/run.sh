#!/usr/bin/env bash
# run.sh [MUTATION...]: shows that the tests can fail. Each mutation is a small mistake made on purpose, a patch in this
# folder; its first line says what the mistake is, its second who must notice it:
#   Noticed by: validator CASE         a case of plughost validate
#   Noticed by: PROGRAM CASE           a case of a test program that takes the plug-in's file from its environment
#   Noticed by: self_check CHECK       a line of examples/self_check.xojo_script that says NOT
# That check passes with the plug-in as it is and fails with the mutation. The patches are applied to copies of the
# checkout, one for each of MUTATION_JOBS (2) workers, that build the plug-in alone; needs a finished `make build`.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
here=tools/mutations
tree=$PWD/build/linux-i386
jobs=${MUTATION_JOBS:-2}

names=("$@")
[ ${#names[@]} -gt 0 ] || names=("$here"/*.patch)
names=("${names[@]##*/}")
names=("${names[@]%.patch}")

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# A copy that is as new is put back whole after each mutation, so that only what the next one touches is built.
make_copy() {
    local copy=$1
    mkdir "$copy"
    git ls-files -z | xargs -0 tar -c --ignore-failed-read 2>/dev/null | tar -x -C "$copy"
    (cd "$copy" && tools/setup/configure.sh linux-i386 >/dev/null)
    build "$copy"
    cp -a "$copy" "$copy.new"
}

build() {
    cmake --build "$1/build/linux-i386" --target NSUserDefaults -- -j1 >"$1.log" 2>&1 || {
        cat "$1.log" >&2
        return 1
    }
}

# self_check PLUGIN CHECK: status 0 when the self check finds everything right, 1 when it says NOT of that check.
self_check() {
    local said
    said=$(PLUGHOST_BUILD=$tree examples/run.sh self_check --plugin "$1" 2>&1)
    printf '%s\n' "$said" | grep -v '^ok ' || true
    [[ $said = *", all ok" ]] && return 0
    [[ $said = *"NOT  $2: "* ]] && return 1
    return 2
}

# check PLUGIN PROGRAM CASE: status 0 when the case passes; prints what it said.
check() {
    case $2 in
    validator) "$tree/plughost" validate --plugin "$1" --only "$3" ;;
    self_check) self_check "$1" "$3" ;;
    *)
        PLUGIN_UNDER_TEST=$1 "$tree/run-env" --fresh-defaults \
            "$(find "$tree/tests" -name "$2" -type f)" --gtest_filter="$3"
        ;;
    esac </dev/null 2>&1
}

# Prints one line; status 1 when nobody notices.
try() {
    local copy=$1 patch=$here/$2.patch what program case said status=0
    what=$(sed -n 1p "$patch")
    read -r program case < <(sed -n '2s/^Noticed by: //p' "$patch")
    said=$(check "$tree/NSUserDefaults.so" "$program" "$case") || {
        printf '%s: %s %s fails without the mutation, too\n%s\n' "$2" "$program" "$case" "$said" >&2
        return 1
    }
    rm -rf "$copy"
    cp -a "$copy.new" "$copy"
    patch --quiet -p1 -d "$copy" <"$patch" && build "$copy" || return 1
    check "$copy/build/linux-i386/NSUserDefaults.so" "$program" "$case" >"$copy.said" || status=$?
    if [ "$status" -eq 0 ] || { [ "$program" = self_check ] && [ "$status" -ne 1 ]; }; then
        echo "$2: NOT NOTICED by $program $case. $what" >&2
        return 1
    fi
    echo "$2: noticed by $program $case. $what"
}

# Every mutation whose number is this worker's turn.
work() {
    local number missed=0
    make_copy "$scratch/$1" || return 1
    for ((number = $1; number < ${#names[@]}; number += jobs)); do
        try "$scratch/$1" "${names[number]}" || missed=1
    done
    return "$missed"
}

workers=()
for ((worker = 0; worker < jobs; worker++)); do
    work "$worker" &
    workers+=($!)
done
missed=0
for worker in "${workers[@]}"; do
    wait "$worker" || missed=1
done
[ "$missed" -ne 0 ] || echo "${#names[@]} mutations, all noticed"
exit "$missed"
