#!/usr/bin/env bash
# run_case.sh SCRIPT CASE: runs one case of a test script in a temporary folder that is removed afterwards. The first
# expectation that does not hold ends the case.
set -euo pipefail
script=$1 case=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

fail() {
    echo "$script: $case: $*" >&2
    exit 1
}

expect_equal() {
    [ "$1" = "$2" ] || fail "expected '$2', got '$1'"
}

expect_matches() {
    [[ $1 =~ $2 ]] || fail "expected something like '$2', got '$1'"
}

expect_absent() {
    [ ! -e "$1" ] && [ ! -L "$1" ] || fail "$1 should not be there"
}

# run COMMAND...: leaves its exit status in $status, its output in the files out and err.
run() {
    status=0
    "$@" >out 2>err </dev/null || status=$?
}

# Puts a command before all others in PATH; its body is read from standard input.
shadow() {
    mkdir -p "$scratch/bin"
    { echo '#!/usr/bin/env bash' && cat; } >"$scratch/bin/$1"
    chmod +x "$scratch/bin/$1"
    PATH=$scratch/bin:${PATH#"$scratch/bin:"}
}

. "$script"
"$case"
