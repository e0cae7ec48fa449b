#!/usr/bin/env bash
# coverage-report.sh COUNTS BINARY...: what the counts in that folder (*.profraw) say about the folders of the
# product: a table, then the branches that were not taken in both directions, with their lines.
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
sources=(plugin userdefaults bridge hostapi)

llvm-cov-14 report "${objects[@]}" -instr-profile "$data" -show-branch-summary "${sources[@]/#/$PWD/}" |
    sed "s|^$PWD/||"
echo
echo "Branches that no test took in one of their directions:"
llvm-cov-14 show "${objects[@]}" -instr-profile "$data" -show-branches=count -show-instantiations=false \
    -show-line-counts=false "${sources[@]/#/$PWD/}" |
    awk -v root="$PWD/" '
        /^\// { file = $0; sub(root, "", file); sub(/:$/, "", file) }
        / *[0-9]+\|/ { line = $0 }
        # A template has a line for each set of its parameters; taken in one of them is taken.
        /Branch \([0-9]+:[0-9]+\): / {
            place = $0; sub(/^.*Branch \(/, "", place); sub(/\).*$/, "", place)
            place = file ":" place
            if (!(place in text)) {
                places[++count] = place
                text[place] = line
                sub(/^ *[0-9]+\|[^|]*\| */, "", text[place])
            }
            if ($0 !~ /True: 0,/) whenTrue[place] = 1
            if ($0 !~ /False: 0\]/) whenFalse[place] = 1
        }
        END {
            for (i = 1; i <= count; i++) {
                place = places[i]
                if (!(place in whenTrue)) print place ": never true: " text[place]
                if (!(place in whenFalse)) print place ": never false: " text[place]
            }
        }'
