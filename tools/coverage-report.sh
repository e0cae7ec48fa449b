#!/usr/bin/env bash
# coverage-report.sh COUNTS BINARY...: what the counts in that folder (*.profraw) say about plugin/, bridge/ and
# userdefaults/: a table, then the branches that were not taken in both directions, with their lines.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
counts=$1
shift
objects=("$1")
for binary in "${@:2}"; do
    objects+=(-object "$binary")
done
data=$counts/all.profdata
llvm-profdata-14 merge -sparse -o "$data" "$counts"/*.profraw
sources=(plugin bridge userdefaults)

llvm-cov-14 report "${objects[@]}" -instr-profile "$data" -show-branch-summary "${sources[@]/#/$PWD/}" |
    sed "s|^$PWD/||"
echo
echo "Branches that no test took in one of their directions:"
llvm-cov-14 show "${objects[@]}" -instr-profile "$data" -show-branches=count -show-instantiations=false \
    -show-line-counts=false "${sources[@]/#/$PWD/}" |
    awk -v root="$PWD/" '
        /^\// { file = $0; sub(root, "", file); sub(/:$/, "", file) }
        / *[0-9]+\|/ { line = $0 }
        /Branch \([0-9]+:[0-9]+\): .*(True: 0,|False: 0\])/ {
            place = $0; sub(/^.*Branch \(/, "", place); sub(/\).*$/, "", place)
            taken = $0; sub(/^.*\[/, "", taken); sub(/\].*$/, "", taken)
            text = line; sub(/^ *[0-9]+\|/, "", text); sub(/^ +/, "", text)
            print file ":" place ": " taken ": " text
        }'
